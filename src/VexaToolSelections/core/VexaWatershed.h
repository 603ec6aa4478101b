#pragma once

#include <QImage>

#include <atomic>
#include <vector>

// Over-segments an image into 4-connected regions of similar colour: every pixel floods from
// the local minimum of the colour gradient its descent reaches, as long as the gradient keeps
// rising or stays level. Fills `labels` (W x H, row order) with region indices 0 .. N-1 in the
// order the regions were founded and returns N; an image without pixels gives 0.
int watershed(QImage const& image, std::vector<int>& labels);

// The same, stopping at the start of the next image row once `cancel` is set (the labels are
// then incomplete and the count is of the regions founded so far).
int watershed(QImage const& image, std::vector<int>& labels, const std::atomic<bool>& cancel);

// The same, storing in `rowsFinal` (release) how many rows from the top are labelled for good
// as the scan advances, so that another thread can read them meanwhile; H at the end, unless
// cancelled.
int watershed(QImage const& image, std::vector<int>& labels, const std::atomic<bool>& cancel,
              std::atomic<int>* rowsFinal);
