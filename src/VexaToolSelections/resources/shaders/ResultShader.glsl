// Result: the image faded into the background colour by the matte, on all four channels.
uniform vec2 DimT;
uniform vec4 BkgColor;
uniform sampler2D TriMap;
uniform sampler2D ColMap;

void main()
{
    vec2 here = gl_FragCoord.xy * DimT;
    float a = texture2D(TriMap, here).r;
    gl_FragColor = texture2D(ColMap, here) * a + BkgColor * (1.0 - a);
}
