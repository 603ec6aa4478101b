// A program that cannot compile: a statement without its semicolon.
void main()
{
    gl_FragColor = vec4(1.0)
}
