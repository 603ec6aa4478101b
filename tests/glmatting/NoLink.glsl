// A program that compiles but cannot link: it has no main().
uniform vec2 DimT;

vec4 unused()
{
    return vec4(DimT, 0.0, 1.0);
}
