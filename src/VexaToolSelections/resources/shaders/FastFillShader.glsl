// FastFill: grows the object (red) and background (blue) marks by one pixel per pass into
// unmarked neighbours. Unknown (green) marks never spread and block the others, so a region
// enclosed by an unknown band fills from its seed up to the band.
uniform vec2 DimT;
uniform sampler2D UsrMap;

void main()
{
    vec2 here = gl_FragCoord.xy * DimT;
    vec4 mark = texture2D(UsrMap, here);
    if (mark.r > 0.5 || mark.g > 0.5 || mark.b > 0.5) {
        gl_FragColor = mark;
        return;
    }
    vec4 left = texture2D(UsrMap, here - vec2(DimT.x, 0.0));
    vec4 right = texture2D(UsrMap, here + vec2(DimT.x, 0.0));
    vec4 below = texture2D(UsrMap, here - vec2(0.0, DimT.y));
    vec4 above = texture2D(UsrMap, here + vec2(0.0, DimT.y));
    // The object wins where both kinds touch. Marks are half opaque, 128 of 255 exactly (0.5
    // lies between two levels and drivers round it either way).
    if (left.r > 0.5 || right.r > 0.5 || below.r > 0.5 || above.r > 0.5)
        gl_FragColor = vec4(1.0, 0.0, 0.0, 128.0 / 255.0);
    else if (left.b > 0.5 || right.b > 0.5 || below.b > 0.5 || above.b > 0.5)
        gl_FragColor = vec4(0.0, 0.0, 1.0, 128.0 / 255.0);
    else
        // Nothing reaches this pixel yet: it must stay exactly as it was, and the target of a
        // pass is not its source, so the value is written through.
        gl_FragColor = mark;
}
