#pragma once

#include "graph.h"

#include <QColor>
#include <QImage>

#include <memory>
#include <vector>

// One quick select segmentation: the working image, the user's marks, the over-segmentation
// into regions, the flow graph over them and the matte. The steps (VexaQuickSelectSteps.h)
// read and write it; the quick select window owns it.
struct VexaSegmentation {
    using FlowGraph = Graph<int, int, int>;

    // Mark colours of markImage; readers test single bytes (red: foreground, blue:
    // background, green: boundary).
    static constexpr QRgb ForegroundMark = 0x80FF0000u;
    static constexpr QRgb BackgroundMark = 0x800000FFu;
    static constexpr QRgb BoundaryMark = 0x8000FF00u;

    QImage sourceImage; // ARGB32, opaque
    QImage resultImage; // source colour with the matte in the alpha byte
    QImage alphaImage;  // the matte as opaque grey
    QImage markImage;   // the marks, and the boundary band of the last mark step
    // Alpha8, the size of markImage: 255 where a boundary mark is the user's own stroke rather
    // than the band the last mark step drew. Both hold the same value in markImage, since every
    // step reads them alike; only the view tells them apart. The mark step clears it, as its
    // band replaces every boundary mark.
    QImage userBoundary;
    std::unique_ptr<FlowGraph> graph;
    std::vector<int> regionMap;
    std::vector<int> terminalWeights;
    std::vector<int> regionSizes;
    std::vector<QColor> regionColors;
    int maxWidth = 1536;
    int maxHeight = 1536;
    // The "Sensitivity" the mark step reads; the caller copies it in before the step starts.
    int sensitivity = 10;
    // "Refine Edges": the matte step ends by solving the band's alpha with `refine`. Off by
    // default, so the matte stays the step's own unless the user asks for more.
    bool refineEdges = false;

    // The working image a rendered document becomes: scaled down (never up) to fit
    // maxWidth x maxHeight, aspect ratio kept, without smoothing; every pixel opaque.
    QImage workingImage(const QImage& rendered) const;
    // Takes a rendered document as the new working image and resets marks and matte.
    void load(const QImage& rendered);
    // Result = source, matte fully selected, no marks; regions and graph are kept.
    void reset();
    // Drops the images and the graph (the region vectors stay until the next init).
    void release();
};
