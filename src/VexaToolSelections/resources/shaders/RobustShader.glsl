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
// The map of all-unknown blocks of ClearBlock pixels (see ClearShader), read at a texture
// coordinate times ClearScale. Unbound, it reads 0 and every point is read.
uniform sampler2D ClearMap;
uniform vec2 ClearScale;
uniform float ClearBlock;

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
    for (int k = 0; k < SAMPLES; ++k) {
        vec2 d = vec2(float(Offsets[2 * k]), float(Offsets[2 * k + 1])) * DimT;
        dir[k] = vec2(ct * d.x - st * d.y, st * d.x + ct * d.y);
    }

    // The march visits step lengths i = 0, 4, 8, ... and, at each, the directions in order,
    // taking the first known point of each direction as a sample. Each direction is marched on
    // its own here, to the step where it meets a known point or leaves the texture (after which
    // it can read nothing), so that a long ray does not hold up the others; the samples are
    // then put in the order of that march: by step, and by direction within a step.
    int order[SAMPLES];   // step * SAMPLES + direction; -1 for a direction without a sample
    bool object[SAMPLES];
    vec3 colour[SAMPLES];
    for (int k = 0; k < SAMPLES; ++k) {
        int hit = -1;
        float a = 0.0;
        // Pixels one step moves along either axis, at most.
        float reach = 4.0 * max(abs(dir[k].x) / DimT.x, abs(dir[k].y) / DimT.y);
        int i = 0;
        while (i < Steps) {
            vec2 p = here + dir[k] * float(i);
            // A ray that has left the texture never comes back: its points only move farther out.
            if (p.x < 0.0 || p.x > 1.0 || p.y < 0.0 || p.y > 1.0)
                break;
            a = texture2D(TriMap, p).r;
            if (a > 0.75 || a < 0.25) {
                hit = i;
                break;
            }
            // Every pixel within `clear` of this one (in both directions) is unknown: that far
            // the points of the ray would all be passed over. The block count is lowered by one
            // in case the map is read one block off, and the distance by one and a half pixels
            // for the pixel a point falls in and the rounding of its coordinate.
            float clear = (floor(texture2D(ClearMap, p * ClearScale).r * 255.0 + 0.5) - 2.0) * ClearBlock;
            int skip = int(max(floor((clear - 1.5) / reach), 0.0));
            i += 4 * (skip + 1);
        }
        order[k] = hit < 0 ? -1 : hit * SAMPLES + k;
        object[k] = a > 0.75;
        colour[k] = hit < 0 ? vec3(0.0) : texture2D(ColMap, here + dir[k] * float(hit)).rgb;
    }

    vec3 fg[SAMPLES];
    float fd[SAMPLES];
    vec3 bg[SAMPLES];
    float bd[SAMPLES];
    int nf = 0;
    int nb = 0;
    for (int k = 0; k < SAMPLES; ++k) {
        if (order[k] < 0)
            continue;
        // The place of this sample among those of its kind.
        int rank = 0;
        for (int m = 0; m < SAMPLES; ++m)
            if (order[m] >= 0 && order[m] < order[k] && object[m] == object[k])
                ++rank;
        if (object[k]) {
            fg[rank] = colour[k];
            fd[rank] = length(colour[k] - c0);
            ++nf;
        } else {
            bg[rank] = colour[k];
            bd[rank] = length(colour[k] - c0);
            ++nb;
        }
    }

    if (nf == 0 && nb == 0) {
        // Still unknown: 128 of 255 exactly (0.5 lies between two levels; drivers round it
        // either way).
        gl_FragColor = vec4(128.0 / 255.0, 128.0 / 255.0, 128.0 / 255.0, 1.0);
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
