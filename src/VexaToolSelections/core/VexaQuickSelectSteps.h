#pragma once

#include <QRect>
#include <QRgb>
#include <QString>

#include <atomic>
#include <vector>

#include "VexaParallel.h"

struct VexaSegmentation;
class QImage;

// Where a quick select step sends its reports. The worker thread forwards them to the window
// as queued signals; tests and the command-line tool record or ignore them.
class VexaQuickSelectReporter
{
public:
    virtual ~VexaQuickSelectReporter();
    virtual void progress(const QString& text, int percent) = 0;
    virtual void setPainting(bool enabled) = 0;
    virtual void setMessage(const QString& text) = 0;
    // The matte step shows its result: "View Alpha" checked, then "View Matte".
    virtual void checkViewAlpha() = 0;
    virtual void checkViewMatte() = 0;
    virtual void updateImageBox(const QRect& area) = 0;
};

// For callers without a window (the command line, the fuzzer): keeps the last message, which
// is the hint when a step asks for more marks, and ignores the rest.
class VexaQuickSelectQuietReporter : public VexaQuickSelectReporter
{
public:
    void progress(const QString&, int) override {}
    void setPainting(bool) override {}
    void setMessage(const QString& text) override { message = text; }
    void checkViewAlpha() override {}
    void checkViewMatte() override {}
    void updateImageBox(const QRect&) override {}
    QString message;
};

// The three steps of a quick select segmentation. Each polls `cancel` between stages and row
// by row in its long loops and returns at once when it is set, leaving the segmentation to be
// released or rebuilt.
namespace VexaQuickSelect {

// Regions by watershed, their sizes and mean colours, and the flow graph over their adjacency.
void init(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel);
// Colour models from the marks, terminal weights, the cut, a softened matte and the boundary band.
void mark(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel);
// Trimap from the marks and the band, shrunk by colour matches, alpha from nearby sample pairs.
void matte(VexaSegmentation& seg, VexaQuickSelectReporter& report, const std::atomic<bool>& cancel);

// The alpha (0..255) of a pixel of colour `colour` from its foreground and background samples
// (at most 8 each, in slot order): the mean over the three best-fitting sample pairs.
int alphaFromSamples(QRgb colour, const QRgb* foreground, int nf, const QRgb* background, int nb);

// A float per pixel, W x H in row order, left unset when allocated: every user writes all of it
// first, on both cores.
using AlphaBuffer = std::vector<float, FilledLater<float>>;

// `passes` passes of re-estimating every pixel on an edge of the alpha `a` (W x H, row order)
// from its 3 x 3 patch of `source`, weighted by the patch's intensities; pixels with a
// foreground or background mark keep 1 or 0. The result is in `a`; `scratch` is the other
// buffer of the passes, any contents, brought to the size of `a`.
bool smoothBorder(AlphaBuffer& a, AlphaBuffer& scratch, const QImage& source, const QImage& marks, int passes,
                  const std::atomic<bool>& cancel);

} // namespace VexaQuickSelect
