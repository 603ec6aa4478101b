// Result: the image faded into the background colour by the matte, on all four channels.
// It draws into the widget, whose frame buffer may be larger than the image (a larger widget,
// a high-density screen), so each fragment reads the texel under it through the quad's
// texture coordinates rather than its window position. DimT is kept for the owners that set it.
uniform vec2 DimT;
uniform vec4 BkgColor;
uniform sampler2D TriMap;
uniform sampler2D ColMap;

void main()
{
    vec2 here = gl_TexCoord[0].xy;
    float a = texture2D(TriMap, here).r;
    gl_FragColor = texture2D(ColMap, here) * a + BkgColor * (1.0 - a);
}
