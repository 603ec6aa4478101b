// Robust: estimates the alpha of an unknown pixel from object and background colours found
// along 16 rays. The rays are turned by a different angle at every pixel so that neighbouring
// pixels sample different places; each ray stops at its first known pixel. Every pair of an
// object and a background sample predicts an alpha; the three best-scoring predictions are
// averaged.
uniform int Steps;
uniform vec2 DimT;
uniform sampler2D TriMap;
uniform sampler2D ColMap;
uniform int Offsets[32];

const int SAMPLES = 16;

void main()
{
    vec2 here = gl_FragCoord.xy * DimT;
    vec4 tri = texture2D(TriMap, here);
    if (tri.r > 0.75 || tri.r < 0.25) {
        gl_FragColor = tri;
        return;
    }
    vec3 c0 = texture2D(ColMap, here).rgb;

    float t = (gl_FragCoord.x * gl_FragCoord.y) * 0.1;
    float ct = cos(t);
    float st = sin(t);
    vec2 dir[SAMPLES];
    bool stopped[SAMPLES];
    for (int k = 0; k < SAMPLES; ++k) {
        vec2 d = vec2(float(Offsets[2 * k]), float(Offsets[2 * k + 1])) * DimT;
        dir[k] = vec2(ct * d.x - st * d.y, st * d.x + ct * d.y);
        stopped[k] = false;
    }

    vec3 fg[SAMPLES];
    float fd[SAMPLES];
    vec3 bg[SAMPLES];
    float bd[SAMPLES];
    int nf = 0;
    int nb = 0;
    int nstopped = 0;
    for (int i = 0; i < Steps && nstopped < SAMPLES; i += 4) {
        for (int k = 0; k < SAMPLES; ++k) {
            if (stopped[k])
                continue;
            vec2 p = here + dir[k] * float(i);
            if (p.x < 0.0 || p.x > 1.0 || p.y < 0.0 || p.y > 1.0)
                continue;
            float a = texture2D(TriMap, p).r;
            if (a > 0.75) {
                if (nf < SAMPLES) {
                    fg[nf] = texture2D(ColMap, p).rgb;
                    fd[nf] = length(fg[nf] - c0);
                    ++nf;
                    stopped[k] = true;
                    ++nstopped;
                }
            } else if (a < 0.25) {
                if (nb < SAMPLES) {
                    bg[nb] = texture2D(ColMap, p).rgb;
                    bd[nb] = length(bg[nb] - c0);
                    ++nb;
                    stopped[k] = true;
                    ++nstopped;
                }
            }
        }
    }

    if (nf == 0 && nb == 0) {
        gl_FragColor = vec4(0.5, 0.5, 0.5, 1.0);
        return;
    }
    if (nf == 0) {
        gl_FragColor = vec4(0.0, 0.0, 0.0, 1.0);
        return;
    }
    if (nb == 0) {
        gl_FragColor = vec4(1.0, 1.0, 1.0, 1.0);
        return;
    }

    // Three (alpha, score) slots, as scalars: the first three pairs fill them in order; a
    // later pair replaces every slot whose score is below its own, checked in slot order.
    float a0 = 0.0, a1 = 0.0, a2 = 0.0;
    float v0 = 0.0, v1 = 0.0, v2 = 0.0;
    int filled = 0;
    for (int i = 0; i < SAMPLES; ++i) {
        if (i >= nf)
            break;
        vec3 cf = fg[i];
        float df = fd[i];
        for (int j = 0; j < SAMPLES; ++j) {
            if (j >= nb)
                break;
            float db = bd[j];
            float sum = df + db;
            // Both samples have the pixel's own colour: either explains it equally well, and
            // 0.5 is where db / (df + db) lies whenever df equals db.
            float a = sum > 0.0 ? db / sum : 0.5;
            vec3 e = a * cf + (1.0 - a) * bg[j] - c0;
            // The score is exp(-|e|^2 100) exp(-df^2 100) exp(-db^2 100). Scores are only
            // compared, so the sum of the exponents stands for it: the product falls below the
            // smallest float once the distances pass about 0.9, and graphics processors flush
            // such values to zero, which would make far pairs tie and the first three win.
            float v = -(dot(e, e) + df * df + db * db) * 100.0;
            if (filled == 0) {
                a0 = a;
                v0 = v;
                filled = 1;
            } else if (filled == 1) {
                a1 = a;
                v1 = v;
                filled = 2;
            } else if (filled == 2) {
                a2 = a;
                v2 = v;
                filled = 3;
            } else {
                if (v0 < v) {
                    a0 = a;
                    v0 = v;
                }
                if (v1 < v) {
                    a1 = a;
                    v1 = v;
                }
                if (v2 < v) {
                    a2 = a;
                    v2 = v;
                }
            }
        }
    }
    float alpha = filled == 1 ? a0 : filled == 2 ? (a0 + a1) / 2.0 : (a0 + a1 + a2) / 3.0;
    gl_FragColor = vec4(alpha, alpha, alpha, 1.0);
}
