// Trimap: turns the painted marks into the basic trimap, alpha in every channel.
// Object marks are certain foreground, unknown marks stay open (0.5), and everything else,
// background marks and unmarked pixels alike, is background.
uniform vec2 DimT;
uniform sampler2D UsrMap;

// The unknown level, 128 of 255: a value 8 bits hold exactly, where 0.5 lies halfway between
// two levels and drivers round it either way.
const float MID = 128.0 / 255.0;

void main()
{
    vec4 mark = texture2D(UsrMap, gl_FragCoord.xy * DimT);
    if (mark.r > 0.5)
        gl_FragColor = vec4(1.0, 1.0, 1.0, 1.0);
    else if (mark.g > 0.5)
        gl_FragColor = vec4(MID, MID, MID, 1.0);
    else
        gl_FragColor = vec4(0.0, 0.0, 0.0, 1.0);
}
