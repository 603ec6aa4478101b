// Closed: one smoothing step of a closed-form style propagation of alpha over grey levels,
// repeated by the caller. Within a 3 x 3 window the alpha of the centre becomes a weighted
// mean of its eight neighbours, weighted by how their grey levels co-vary with the centre's.
// Nearly certain pixels (alpha above 0.95 or below 0.05) are left alone.
uniform vec2 DimT;
uniform sampler2D TriMap;
uniform sampler2D ColMap;

void main()
{
    vec2 here = gl_FragCoord.xy * DimT;
    vec4 tri = texture2D(TriMap, here);
    if (tri.r > 0.95 || tri.r < 0.05) {
        gl_FragColor = tri;
        return;
    }
    float a[9];
    float g[9];
    float mean = 0.0;
    int k = 0;
    for (int j = -1; j <= 1; ++j) {
        for (int i = -1; i <= 1; ++i) {
            vec2 p = here + vec2(float(i), float(j)) * DimT;
            a[k] = texture2D(TriMap, p).r;
            vec3 c = texture2D(ColMap, p).rgb;
            g[k] = 0.3 * c.r + 0.59 * c.g + 0.11 * c.b;
            mean += g[k];
            ++k;
        }
    }
    mean /= 9.0;
    float s = 0.0;
    for (int n = 0; n < 9; ++n) {
        g[n] -= mean;
        s += g[n] * g[n];
    }
    s = s / 9.0 + 0.001 / 9.0;
    float sumW = 0.0;
    float sumWA = 0.0;
    for (int n = 0; n < 9; ++n) {
        if (n == 4)
            continue;
        float w = (1.0 + g[4] * g[n] / s) / 9.0;
        sumW += w;
        sumWA += w * a[n];
    }
    float alpha = sumWA / sumW;
    gl_FragColor = vec4(alpha, alpha, alpha, 1.0);
}

// The colour variant of the same step, kept for reference and not compiled: the grey
// variance becomes the 3 x 3 colour covariance with the same regularisation on its diagonal,
// and only alphas above 0.99 or below 0.01 count as certain.
//
// void main()
// {
//     vec2 here = gl_FragCoord.xy * DimT;
//     vec4 tri = texture2D(TriMap, here);
//     if (tri.r > 0.99 || tri.r < 0.01) {
//         gl_FragColor = tri;
//         return;
//     }
//     float a[9];
//     vec3 c[9];
//     vec3 mean = vec3(0.0);
//     int k = 0;
//     for (int j = -1; j <= 1; ++j)
//         for (int i = -1; i <= 1; ++i) {
//             vec2 p = here + vec2(float(i), float(j)) * DimT;
//             a[k] = texture2D(TriMap, p).r;
//             c[k] = texture2D(ColMap, p).rgb;
//             mean += c[k];
//             ++k;
//         }
//     mean /= 9.0;
//     mat3 cov = mat3(0.0);
//     for (int n = 0; n < 9; ++n) {
//         c[n] -= mean;
//         cov += outerProduct(c[n], c[n]);
//     }
//     cov = cov / 9.0 + mat3(0.001 / 9.0);
//     mat3 inv = inverse(cov);
//     float sumW = 0.0;
//     float sumWA = 0.0;
//     for (int n = 0; n < 9; ++n) {
//         if (n == 4)
//             continue;
//         float w = (1.0 + dot(c[4], inv * c[n])) / 9.0;
//         sumW += w;
//         sumWA += w * a[n];
//     }
//     float alpha = sumWA / sumW;
//     gl_FragColor = vec4(alpha, alpha, alpha, 1.0);
// }
