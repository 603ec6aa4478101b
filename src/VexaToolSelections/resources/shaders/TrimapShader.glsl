// Matting pass of the GPU matting view; the pass itself arrives with the view.
void main()
{
    gl_FragColor = vec4(0.0);
}
