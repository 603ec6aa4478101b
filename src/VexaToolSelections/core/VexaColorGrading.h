#pragma once

#include <QImage>

#include <cstdint>
#include <vector>

// Grading pixels by their colour distance from a reference colour: 255 for the colour itself,
// falling linearly to 0 at a distance of 3 x tolerance (Euclidean, in 8-bit RGB).
namespace VexaColorGrading {

// The grade of one pixel, straight from the definition.
int grade(QRgb pixel, QRgb reference, int tolerance);

// Grades for every squared distance that can still give a grade above 0: the same values as
// grade(), without a square root per pixel.
class Table
{
public:
    Table(int tolerance);
    uint8_t operator()(int squaredDistance) const
    {
        return size_t(squaredDistance) < m_grades.size() ? m_grades[size_t(squaredDistance)] : 0;
    }

private:
    std::vector<uint8_t> m_grades;
};

// Writes the grade of every pixel of `image` into `out` (image height rows of `stride` bytes).
void gradeImage(const QImage& image, QRgb reference, int tolerance, uint8_t* out, int stride);

// The grey picture of the grades (g, g, g, 255), the size of `image`.
QImage gradeThumbnail(const QImage& image, QRgb reference, int tolerance);

// `image` scaled down to fit `bound` x `bound` (never up), aspect ratio kept, without smoothing.
QImage thumbnail(const QImage& image, int bound);

} // namespace VexaColorGrading
