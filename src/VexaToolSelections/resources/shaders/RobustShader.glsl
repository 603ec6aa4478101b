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

// Every loop below has a constant count, and every array a constant index once its loop is
// unrolled, so that the arrays can live in registers instead of memory: sorting the samples in
// place of scattering them by rank halved the pass on a data-centre GPU. The pragma asks one
// compiler to unroll everything; others ignore it.
#pragma optionNV(unroll all)

vec4 shade(vec2 at)
{
    vec2 here = at * DimT;
    vec4 tri = texture2D(TriMap, here);
    if (tri.r > 0.75 || tri.r < 0.25) {
        return tri;
    }
    vec3 c0 = texture2D(ColMap, here).rgb;

    float t = (at.x * at.y) * 0.1;
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
    // Each sample's key: its place in that march (step * SAMPLES + direction), plus Background
    // for a background sample, so that sorting the keys puts the object samples first and the
    // background ones after them, each in march order; None for a direction without a sample.
    const int Background = 16777216;
    const int None = 33554432;
    int key[SAMPLES];
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
        key[k] = hit < 0 ? None : hit * SAMPLES + k + (a > 0.75 ? 0 : Background);
        colour[k] = hit < 0 ? vec3(0.0) : texture2D(ColMap, here + dir[k] * float(hit)).rgb;
    }
    // Odd-even transposition sort: sixteen rounds, alternately over the even and the odd
    // neighbour pairs, sort sixteen keys.
    for (int r = 0; r < SAMPLES / 2; ++r) {
        for (int k = 0; k + 1 < SAMPLES; k += 2) {
            if (key[k + 1] < key[k]) {
                int t = key[k]; key[k] = key[k + 1]; key[k + 1] = t;
                vec3 c = colour[k]; colour[k] = colour[k + 1]; colour[k + 1] = c;
            }
        }
        for (int k = 1; k + 1 < SAMPLES; k += 2) {
            if (key[k + 1] < key[k]) {
                int t = key[k]; key[k] = key[k + 1]; key[k + 1] = t;
                vec3 c = colour[k]; colour[k] = colour[k + 1]; colour[k + 1] = c;
            }
        }
    }
    int nf = 0;
    int nb = 0;
    float dist[SAMPLES];
    for (int k = 0; k < SAMPLES; ++k) {
        dist[k] = length(colour[k] - c0);
        if (key[k] < Background)
            ++nf;
        else if (key[k] < None)
            ++nb;
    }

    if (nf == 0 && nb == 0) {
        // Still unknown: 128 of 255 exactly (0.5 lies between two levels; drivers round it
        // either way).
        return vec4(128.0 / 255.0, 128.0 / 255.0, 128.0 / 255.0, 1.0);
    }
    if (nf == 0) {
        return vec4(0.0, 0.0, 0.0, 1.0);
    }
    if (nb == 0) {
        return vec4(1.0, 1.0, 1.0, 1.0);
    }

    // Three (alpha, score) slots, as scalars: the first three pairs fill them in order; a
    // later pair replaces every slot whose score is below its own, checked in slot order.
    // Object samples sit at 0 .. nf - 1 and background ones at nf .. nf + nb - 1.
    float a0 = 0.0, a1 = 0.0, a2 = 0.0;
    float v0 = 0.0, v1 = 0.0, v2 = 0.0;
    int filled = 0;
    for (int i = 0; i < SAMPLES; ++i) {
        for (int j = i + 1; j < SAMPLES; ++j) {
            if (i >= nf || j < nf || j >= nf + nb)
                continue;
            vec3 cf = colour[i];
            float df = dist[i];
            float db = dist[j];
            float sum = df + db;
            // Both samples have the pixel's own colour: either explains it equally well, and
            // 0.5 is where db / (df + db) lies whenever df equals db.
            float a = sum > 0.0 ? db / sum : 0.5;
            vec3 e = a * cf + (1.0 - a) * colour[j] - c0;
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
    return vec4(alpha, alpha, alpha, 1.0);
}

// As a compute program (see ComputePass.glsl) shade() runs for every pixel of a grid of
// invocations instead.
#ifndef COMPUTE_PASS
void main()
{
    gl_FragColor = shade(gl_FragCoord.xy);
}
#endif
