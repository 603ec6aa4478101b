#pragma once

#include <QImage>

#include <algorithm>
#include <atomic>
#include <functional>
#include <vector>

namespace VexaQuickSelect {

// How `refine` ended.
enum class RefineResult {
    Done,
    Cancelled,
    BadInput, // no photo, a trimap of another size, or a trimap with no known pixel
};

struct RefineParameters {
    // The colour-line regulariser of the matting windows, for channels 0..1: smaller keeps
    // edges sharper but makes the system stiffer to solve.
    double epsilon = 1e-7;
    // The solve stops when the residual has fallen to this fraction of its scale. Measured
    // on composites of known alpha (bench-refine), 1e-3 takes about a third of the time of
    // 1e-4 and lands closer to the truth on average: stopping early leaves the middle of a
    // wide unknown zone near its start, where the converged solution drifts towards one side.
    double tolerance = 1e-3;
    // ... and, started from the half-size solution, not before the residual has fallen to this
    // fraction of its first value.
    double reduction = 3e-3;
    int maxIterations = 1500;
    // Problems of at least this many unknown pixels start from their own solution at half
    // size, solved to `coarseTolerance` alone.
    int halfSizeFrom = 20000;
    double coarseTolerance = 1e-2;
};

// Soft alpha for the unknown pixels of a trimap. `trimap` has the photo's size, read as grey
// bytes: 0 background, 255 object, any other value unknown. `prior`, when not null, holds one
// alpha 0..1 per pixel (row order) that starts the solve (averaged with the half-size solution
// when there is one). `alpha` receives W x H values 0..1 in row order: the known pixels
// exactly 0 or 1, the unknown ones solved. `progress` (may be
// empty) receives 0..100 from the worker's thread; `cancel` is polled per iteration and per
// block of rows, and a cancelled call leaves `alpha` unspecified.
RefineResult refine(const QImage& photo, const QImage& trimap, const float* prior, std::vector<float>& alpha,
                    const std::function<void(int)>& progress, const std::atomic<bool>& cancel,
                    const RefineParameters& parameters = RefineParameters());

// A refined alpha as a byte, rounded: the solve is good to its tolerance either side, and
// truncating would turn an object pixel solved as 0.99999 into 254.
inline int refinedByte(float alpha)
{
    return int(std::clamp(alpha, 0.0f, 1.0f) * 255.0f + 0.5f);
}

} // namespace VexaQuickSelect
