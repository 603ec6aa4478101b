#pragma once

class VexaPictureHost;

// Region growing over a layer's pixels.
class VexaAlgorithmGrow
{
public:
    // Sets to 255 every byte of `mask` (layer-sized, rows of the layer's width) whose pixel is
    // 4-connected to (x, y) through pixels whose colour differs from the seed's by at most
    // `threshold` in each of red, green, blue and alpha. Other bytes are left alone. A seed
    // outside the layer grows nothing.
    static void grow(VexaPictureHost* picture, unsigned char* mask, float threshold, int x, int y);
};
