// Clear: a coarse map of how far the unknown band reaches, which lets Robust's rays pass over
// long unknown stretches without reading every point of them. It only ever tells a ray what it
// would have found anyway (unknown points), so the matte does not change.
//
// One texel of the map stands for a block of Block x Block pixels. With Reach 0 the map is
// made from the trimap: 1 for a block whose pixels are all unknown, 0 for one with a known
// pixel. Each later pass, with Reach r, spreads it: a texel holding v means every block within
// v - 1 blocks of it (in both directions) is all unknown; where the nine blocks r apart hold
// v - 1 squares that touch, their union is a square of v - 1 + r. Reads beyond the border
// return the edge texel, whose square covers whatever part of the other lies inside the map.
// Values are stored as v / 255.
uniform int Reach;
uniform int Block;
uniform vec2 DimS; // (1 / width, 1 / height) of the source texture
uniform sampler2D Source;

void main()
{
    if (Reach == 0) {
        vec2 first = (gl_FragCoord.xy - 0.5) * float(Block) + 0.5;
        float clear = 1.0;
        for (int j = 0; j < Block; ++j)
            for (int i = 0; i < Block; ++i) {
                float a = texture2D(Source, (first + vec2(float(i), float(j))) * DimS).r;
                if (a > 0.75 || a < 0.25)
                    clear = 0.0;
            }
        gl_FragColor = vec4(clear / 255.0, 0.0, 0.0, 1.0);
        return;
    }
    vec2 here = gl_FragCoord.xy * DimS;
    float own = floor(texture2D(Source, here).r * 255.0 + 0.5);
    float least = own;
    for (int j = -1; j <= 1; ++j)
        for (int i = -1; i <= 1; ++i)
            least = min(least, floor(texture2D(Source, here + vec2(float(i * Reach), float(j * Reach)) * DimS).r * 255.0 + 0.5));
    float v = 2.0 * least - 1.0 >= float(Reach) ? min(least + float(Reach), 255.0) : own;
    gl_FragColor = vec4(v / 255.0, 0.0, 0.0, 1.0);
}
