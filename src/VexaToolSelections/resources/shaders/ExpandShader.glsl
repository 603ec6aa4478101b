// Expand: settles an unknown pixel from the nearest pixel within radius 10 whose colour is
// nearly identical (squared RGBA difference at most 0.0004). The nearest wins; among equal
// distances the first in scan order (rows from -10 up, columns from -10 up) stays.
uniform vec2 DimT;
uniform sampler2D TriMap;
uniform sampler2D ColMap;

vec4 shade(vec2 at)
{
    vec2 here = at * DimT;
    vec4 tri = texture2D(TriMap, here);
    if (tri.r > 0.75 || tri.r < 0.25)
        return tri;
    vec4 c0 = texture2D(ColMap, here);
    int best = 101; // beyond the radius: nothing found yet
    vec2 bestOffset = vec2(0.0, 0.0);
    for (int j = -10; j <= 10; ++j) {
        for (int i = -10; i <= 10; ++i) {
            int d = i * i + j * j;
            if (d == 0 || d > 100 || d >= best)
                continue;
            vec2 offset = vec2(float(i), float(j));
            vec4 diff = texture2D(ColMap, here + offset * DimT) - c0;
            if (dot(diff, diff) <= 0.0004) {
                best = d;
                bestOffset = offset;
            }
        }
    }
    return best > 100 ? tri : texture2D(TriMap, here + bestOffset * DimT);
}

#ifndef COMPUTE_PASS
void main()
{
    gl_FragColor = shade(gl_FragCoord.xy);
}
#endif
