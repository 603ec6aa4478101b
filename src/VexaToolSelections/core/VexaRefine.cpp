// Edge refinement by closed-form matting (Levin, Lischinski and Weiss, "A Closed-Form Solution
// to Natural Image Matting", 2008): within every 3 x 3 window the alpha is taken as an affine
// function of the colour, which gives the matting Laplacian L with
//   L_ij = sum over windows k holding i and j of
//          [i = j] - (1 + (I_i - mu_k)^T (Sigma_k + eps/9 E)^-1 (I_j - mu_k)) / 9,
// and the alpha minimising a^T L a with the known pixels held at 0 or 1. Only the unknown
// pixels are unknowns: L_uu a_u = -L_uk a_k, solved by conjugate gradients with the diagonal as
// preconditioner.
//
// Where the information has far to travel, diagonal-preconditioned CG moves it a pixel or two per
// iteration: a band 40 pixels wide at 1536 x 1536 took some 400 iterations. So a large problem
// is first solved at half size (colours averaged over 2 x 2 blocks, a block known only where
// all its pixels are known alike), recursively, and that solution, up-sampled, starts the full
// size solve (a cascade, coarse to fine). The half-size levels stop at a looser tolerance:
// they only have to carry the alpha across the band, and solved to the end they also carry it
// deep into wide unknown zones enclosed by one kind of known pixel (the inside of a glass
// ringed by its opaque rim), which then turns wholly opaque, the model's answer there but not
// the photo's.
//
// The rows of L_uu are a fixed 5 x 5 stencil around each unknown pixel, kept as 25
// coefficients per row and applied to a padded image-sized copy of the search direction: no
// index arrays, and the product reads neighbours from nearby memory. The rows, the products
// and the partial sums of the dot products are worked out per fixed block of unknowns and the
// partial sums added in block order, so the result is the same on any number of cores.
#include "VexaRefine.h"

#include "VexaParallel.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>

namespace VexaQuickSelect {

namespace {

// Unknowns per block of the parallel loops: the unit of work and of partial sums.
constexpr int blockSize = 4096;

using Vec3 = Eigen::Vector3d;

inline Vec3 colourOf(QRgb p)
{
    // A product, not a quotient: this runs some 90 times per row of L.
    return Vec3(qRed(p), qGreen(p), qBlue(p)) * (1.0 / 255.0);
}

// A window's mean colour and the inverse of its regularised covariance.
struct Window {
    Vec3 mean;
    Eigen::Matrix3d inverse;
};

// What the rows are built from.
struct Problem {
    int W = 0, H = 0;
    const QRgb* photo = nullptr; // W x H, rows photoStride words apart
    qsizetype photoStride = 0;
    std::vector<int> unknownPixel;   // pixel index of each unknown, row order
    std::vector<int> windowOf;       // per pixel: the index of the window centred there, or -1
    std::vector<Window> windows;
    std::vector<float> known;        // per pixel: 0 or 1 where known, -1 where unknown

    Vec3 colour(int x, int y) const { return colourOf(photo[qsizetype(y) * photoStride + x]); }
};

// Runs body(block) for every block of `count` unknowns on every core.
template <class Body>
void eachBlock(int count, Body&& body)
{
    const int blocks = (count + blockSize - 1) / blockSize;
    parallelItems(blocks, 1, [&](int block) { body(block, block * blockSize, std::min(count, (block + 1) * blockSize)); });
}

// The windows that hold an unknown pixel: centred within one pixel of one, and wholly inside
// the image (windows are never clipped, so edge pixels lie in fewer of them).
void buildWindows(Problem& p, double epsilon, const std::function<void()>& found)
{
    const int W = p.W, H = p.H;
    p.windowOf.assign(size_t(W) * size_t(H), -1);
    for (int i : p.unknownPixel) {
        const int x = i % W, y = i / W;
        for (int cy = std::max(1, y - 1); cy <= std::min(H - 2, y + 1); ++cy)
            for (int cx = std::max(1, x - 1); cx <= std::min(W - 2, x + 1); ++cx)
                p.windowOf[size_t(cy) * W + cx] = 0;
    }
    std::vector<int> centres;
    for (size_t c = 0; c < p.windowOf.size(); ++c)
        if (p.windowOf[c] == 0) {
            p.windowOf[c] = int(centres.size());
            centres.push_back(int(c));
        }
    found();
    p.windows.resize(centres.size());
    const double regulariser = epsilon / 9.0;
    eachBlock(int(centres.size()), [&](int, int first, int last) {
        for (int k = first; k < last; ++k) {
            const int cx = centres[size_t(k)] % W, cy = centres[size_t(k)] / W;
            Vec3 sum = Vec3::Zero();
            Eigen::Matrix3d outer = Eigen::Matrix3d::Zero();
            for (int y = cy - 1; y <= cy + 1; ++y)
                for (int x = cx - 1; x <= cx + 1; ++x) {
                    const Vec3 c = p.colour(x, y);
                    sum += c;
                    outer += c * c.transpose();
                }
            Window& w = p.windows[size_t(k)];
            w.mean = sum / 9.0;
            const Eigen::Matrix3d covariance =
                outer / 9.0 - w.mean * w.mean.transpose() + regulariser * Eigen::Matrix3d::Identity();
            w.inverse = covariance.inverse();
        }
    });
}

// Row `u` of L over the 5 x 5 neighbourhood of its pixel, offsets (dx, dy) at (dy + 2) 5 + dx + 2.
void laplacianRow(const Problem& p, int u, double* row)
{
    const int W = p.W, H = p.H, i = p.unknownPixel[size_t(u)];
    const int x = i % W, y = i / W;
    std::fill(row, row + 25, 0.0);
    const Vec3 ci = p.colour(x, y);
    for (int cy = std::max(1, y - 1); cy <= std::min(H - 2, y + 1); ++cy)
        for (int cx = std::max(1, x - 1); cx <= std::min(W - 2, x + 1); ++cx) {
            const Window& w = p.windows[size_t(p.windowOf[size_t(cy) * W + cx])];
            const Vec3 e = w.inverse * (ci - w.mean);
            row[12] += 1.0;
            for (int jy = cy - 1; jy <= cy + 1; ++jy)
                for (int jx = cx - 1; jx <= cx + 1; ++jx)
                    row[(jy - y + 2) * 5 + jx - x + 2] -= (1.0 + e.dot(p.colour(jx, jy) - w.mean)) / 9.0;
        }
}

RefineResult solve(const QImage& source, const QImage& trimap, const float* prior, std::vector<float>& alpha,
                   const std::function<void(int)>& progress, const std::atomic<bool>& cancel,
                   const RefineParameters& parameters);

// The problem at half size, solved without a prior; `coarse` receives its (W + 1) / 2 x
// (H + 1) / 2 alpha.
RefineResult solveHalfSize(const QImage& source, const QImage& trimap, std::vector<float>& coarse,
                           const std::function<void(int)>& progress, const std::atomic<bool>& cancel,
                           const RefineParameters& parameters)
{
    const int W = source.width(), H = source.height(), CW = (W + 1) / 2, CH = (H + 1) / 2;
    QImage photo(CW, CH, QImage::Format_ARGB32), known(CW, CH, QImage::Format_Grayscale8);
    if (photo.isNull() || known.isNull())
        return RefineResult::BadInput;
    for (int cy = 0; cy < CH; ++cy) {
        QRgb* out = reinterpret_cast<QRgb*>(photo.scanLine(cy));
        uchar* t = known.scanLine(cy);
        for (int cx = 0; cx < CW; ++cx) {
            int r = 0, g = 0, b = 0, count = 0, object = 0, background = 0;
            for (int y = 2 * cy; y < std::min(H, 2 * cy + 2); ++y)
                for (int x = 2 * cx; x < std::min(W, 2 * cx + 2); ++x) {
                    const QRgb c = reinterpret_cast<const QRgb*>(source.constScanLine(y))[x];
                    r += qRed(c);
                    g += qGreen(c);
                    b += qBlue(c);
                    object += trimap.constScanLine(y)[x] == 255;
                    background += trimap.constScanLine(y)[x] == 0;
                    ++count;
                }
            out[cx] = qRgb((r + count / 2) / count, (g + count / 2) / count, (b + count / 2) / count);
            t[cx] = object == count ? 255 : background == count ? 0 : 128;
        }
    }
    RefineParameters loose = parameters;
    loose.tolerance = parameters.coarseTolerance;
    loose.reduction = 1.0;
    return solve(photo, known, nullptr, coarse, progress, cancel, loose);
}

RefineResult solve(const QImage& source, const QImage& trimap, const float* prior, std::vector<float>& alpha,
                   const std::function<void(int)>& progress, const std::atomic<bool>& cancel,
                   const RefineParameters& parameters)
{
    auto report = [&](int percent) {
        if (progress)
            progress(percent);
    };
    Problem p;
    p.W = source.width();
    p.H = source.height();
    p.photo = reinterpret_cast<const QRgb*>(source.constBits());
    p.photoStride = source.bytesPerLine() / 4;
    const int W = p.W, H = p.H;
    p.known.resize(size_t(W) * size_t(H));
    bool anyKnown = false;
    for (int y = 0; y < H; ++y) {
        const uchar* t = trimap.constScanLine(y);
        for (int x = 0; x < W; ++x) {
            const int i = y * W + x;
            if (t[x] == 0 || t[x] == 255) {
                p.known[size_t(i)] = t[x] == 255 ? 1.0f : 0.0f;
                anyKnown = true;
            } else {
                p.known[size_t(i)] = -1.0f;
                p.unknownPixel.push_back(i);
            }
        }
    }
    // Without a known pixel every constant alpha fits equally well: nothing to solve for.
    if (!anyKnown)
        return RefineResult::BadInput;
    report(0);
    alpha.assign(p.known.begin(), p.known.end());
    const int n = int(p.unknownPixel.size());
    const size_t N = p.unknownPixel.size();
    if (n == 0) {
        report(100);
        return RefineResult::Done;
    }

    // The start: the half-size solution when the problem is large enough to pay for one, and
    // the prior, if any, averaged in: the prior brings the detail of whatever made it, the
    // half-size solution what it lacks across the band.
    std::vector<double> x(N);
    for (int u = 0; u < n; ++u)
        x[size_t(u)] = prior ? double(std::clamp(prior[p.unknownPixel[size_t(u)]], 0.0f, 1.0f)) : 0.5;
    bool fromHalfSize = false;
    if (n >= parameters.halfSizeFrom && W >= 8 && H >= 8) {
        std::vector<float> coarse;
        const RefineResult outcome = solveHalfSize(
            source, trimap, coarse, [&](int percent) { report(percent / 20); }, cancel, parameters);
        if (outcome == RefineResult::Cancelled)
            return outcome;
        if (outcome == RefineResult::Done) {
            fromHalfSize = true;
            const int CW = (W + 1) / 2, CH = (H + 1) / 2;
            auto at = [&](int cx, int cy) { return double(coarse[size_t(cy) * CW + cx]); };
            for (int u = 0; u < n; ++u) {
                // Pixel centres: x of the full size sits at (x + 0.5) / 2 - 0.5 of the half size.
                const int i = p.unknownPixel[size_t(u)];
                const double fx = std::clamp((i % W + 0.5) / 2 - 0.5, 0.0, CW - 1.0);
                const double fy = std::clamp((i / W + 0.5) / 2 - 0.5, 0.0, CH - 1.0);
                const int x0 = int(fx), y0 = int(fy), x1 = std::min(x0 + 1, CW - 1), y1 = std::min(y0 + 1, CH - 1);
                const double ax = fx - x0, ay = fy - y0;
                const double up = (1 - ay) * ((1 - ax) * at(x0, y0) + ax * at(x1, y0))
                                  + ay * ((1 - ax) * at(x0, y1) + ax * at(x1, y1));
                x[size_t(u)] = prior ? 0.5 * (x[size_t(u)] + up) : up;
            }
        }
    }
    report(5);

    buildWindows(p, parameters.epsilon, [&] { report(6); });
    if (cancel)
        return RefineResult::Cancelled;
    report(7);

    // The rows of L_uu (entries towards known pixels moved into the right-hand side b).
    // Kept in single precision: the products read them once per iteration and are bound by
    // memory, not arithmetic; sums stay in double.
    std::vector<float> coefficients(size_t(n) * 25);
    std::vector<double> b(N), inverseDiagonal(N);
    std::atomic<bool> stopped{false};
    auto buildRows = [&](int first, int last) {
        if (cancel) {
            stopped = true;
            return;
        }
        double row[25];
        for (int u = first; u < last; ++u) {
            laplacianRow(p, u, row);
            const int i = p.unknownPixel[size_t(u)], x = i % W, y = i / W;
            double rhs = 0.0;
            for (int dy = -2; dy <= 2; ++dy)
                for (int dx = -2; dx <= 2; ++dx) {
                    double& c = row[(dy + 2) * 5 + dx + 2];
                    if (x + dx < 0 || x + dx >= W || y + dy < 0 || y + dy >= H) {
                        c = 0.0;
                        continue;
                    }
                    const float k = p.known[size_t(i + dy * W + dx)];
                    if (k >= 0.0f) {
                        rhs -= c * double(k);
                        c = 0.0;
                    }
                }
            b[size_t(u)] = rhs;
            float* stored = coefficients.data() + size_t(u) * 25;
            for (int o = 0; o < 25; ++o)
                stored[o] = float(row[o]);
            inverseDiagonal[size_t(u)] = 1.0 / double(stored[12]);
        }
    };
    // In three waves, so that progress moves while a wide band's rows are built (about a
    // tenth of a second at 1536 x 1536 with a fifth unknown). Rows are independent: the split
    // changes nothing in them.
    const int perWave = ((n + 2) / 3 + blockSize - 1) / blockSize * blockSize;
    for (int from = 0, percent = 8; from < n && !stopped; from += perWave, percent = std::min(percent + 1, 9)) {
        const int to = std::min(n, from + perWave);
        eachBlock(to - from, [&](int, int first, int last) { buildRows(from + first, from + last); });
        report(percent);
    }
    if (stopped)
        return RefineResult::Cancelled;
    p.windows = std::vector<Window>();
    p.windowOf = std::vector<int>();
    report(10);

    // The search direction lives in a copy of the image with a border of two pixels, zero
    // wherever it is not an unknown, so every row reads its 25 neighbours without tests.
    const int PW = W + 4;
    std::vector<double> direction(size_t(PW) * size_t(H + 4), 0.0);
    std::vector<int> padded(N);
    for (int u = 0; u < n; ++u) {
        const int i = p.unknownPixel[size_t(u)];
        padded[size_t(u)] = (i / W + 2) * PW + i % W + 2;
    }

    std::vector<double> r(N), z(N), q(N);
    const size_t B = size_t((n + blockSize - 1) / blockSize);
    std::vector<double> partA(B), partB(B), partC(B);
    auto total = [](const std::vector<double>& parts) {
        double s = 0.0;
        for (double v : parts)
            s += v;
        return s;
    };
    // One sum per stencil column, added in a fixed order at the end: five short chains of
    // additions instead of one of 25, which the processor overlaps.
    auto product = [&](int u) {
        const float* c = coefficients.data() + size_t(u) * 25;
        const double* d = direction.data() + padded[size_t(u)] - 2 * PW - 2;
        double s0 = 0.0, s1 = 0.0, s2 = 0.0, s3 = 0.0, s4 = 0.0;
        for (int k = 0; k < 5; ++k, c += 5, d += PW) {
            s0 += double(c[0]) * d[0];
            s1 += double(c[1]) * d[1];
            s2 += double(c[2]) * d[2];
            s3 += double(c[3]) * d[3];
            s4 += double(c[4]) * d[4];
        }
        return ((s0 + s1) + (s2 + s3)) + s4;
    };

    // r = b - A x with x scattered as the first direction; then z = M^-1 r, p = z.
    eachBlock(n, [&](int, int first, int last) {
        for (int u = first; u < last; ++u)
            direction[size_t(padded[size_t(u)])] = x[size_t(u)];
    });
    eachBlock(n, [&](int block, int first, int last) {
        double rz = 0.0, rr = 0.0, bb = 0.0;
        for (int u = first; u < last; ++u) {
            r[size_t(u)] = b[size_t(u)] - product(u);
            z[size_t(u)] = r[size_t(u)] * inverseDiagonal[size_t(u)];
            rz += r[size_t(u)] * z[size_t(u)];
            rr += r[size_t(u)] * r[size_t(u)];
            bb += b[size_t(u)] * b[size_t(u)];
        }
        partA[size_t(block)] = rz;
        partB[size_t(block)] = rr;
        partC[size_t(block)] = bb;
    });
    double rz = total(partA), rr = total(partB);
    // The scale the residual is measured against: the right-hand side, or the first residual
    // when the known pixels pull nowhere (all zero), so a prior still gets refined.
    // From the half-size start the first residual is mostly the up-sampling's fine grain, which
    // the first iterations remove, while error left in slowly varying parts hardly shows in the
    // residual: so the solve also has to cut its own first residual by `reduction`.
    const double start = std::sqrt(rr);
    const double scale = std::max(std::sqrt(total(partC)), start);
    const double target = std::min(parameters.tolerance * scale, (fromHalfSize ? parameters.reduction : 1.0) * start);
    eachBlock(n, [&](int, int first, int last) {
        for (int u = first; u < last; ++u)
            direction[size_t(padded[size_t(u)])] = z[size_t(u)];
    });
    int shown = 10;
    for (int iteration = 0; iteration < parameters.maxIterations; ++iteration) {
        const double residual = std::sqrt(rr);
        if (!(residual > target) || scale == 0.0)
            break;
        if (cancel)
            return RefineResult::Cancelled;
        // Progress by how far the residual has come on a log scale towards the target.
        if (start > target && residual < start) {
            const int percent = 10 + int(90.0 * std::log(start / residual) / std::log(start / target));
            if (percent > shown) {
                shown = std::min(percent, 99);
                report(shown);
            }
        }
        eachBlock(n, [&](int block, int first, int last) {
            double pq = 0.0;
            for (int u = first; u < last; ++u) {
                q[size_t(u)] = product(u);
                pq += direction[size_t(padded[size_t(u)])] * q[size_t(u)];
            }
            partA[size_t(block)] = pq;
        });
        const double pq = total(partA);
        if (!(pq > 0.0))
            break; // the direction carries no curvature left: converged as far as doubles go
        const double step = rz / pq;
        eachBlock(n, [&](int block, int first, int last) {
            double s = 0.0, t = 0.0;
            for (int u = first; u < last; ++u) {
                x[size_t(u)] += step * direction[size_t(padded[size_t(u)])];
                r[size_t(u)] -= step * q[size_t(u)];
                z[size_t(u)] = r[size_t(u)] * inverseDiagonal[size_t(u)];
                s += r[size_t(u)] * z[size_t(u)];
                t += r[size_t(u)] * r[size_t(u)];
            }
            partA[size_t(block)] = s;
            partB[size_t(block)] = t;
        });
        const double next = total(partA);
        rr = total(partB);
        const double beta = next / rz;
        rz = next;
        eachBlock(n, [&](int, int first, int last) {
            for (int u = first; u < last; ++u) {
                double& d = direction[size_t(padded[size_t(u)])];
                d = z[size_t(u)] + beta * d;
            }
        });
    }
    for (int u = 0; u < n; ++u)
        alpha[size_t(p.unknownPixel[size_t(u)])] = float(std::clamp(x[size_t(u)], 0.0, 1.0));
    report(100);
    return RefineResult::Done;
}

} // namespace

RefineResult refine(const QImage& photo, const QImage& trimap, const float* prior, std::vector<float>& alpha,
                    const std::function<void(int)>& progress, const std::atomic<bool>& cancel,
                    const RefineParameters& parameters)
{
    if (photo.isNull() || trimap.size() != photo.size())
        return RefineResult::BadInput;
    return solve(photo.convertToFormat(QImage::Format_ARGB32), trimap.convertToFormat(QImage::Format_Grayscale8), prior,
                 alpha, progress, cancel, parameters);
}

} // namespace VexaQuickSelect
