#pragma once
#include <vector>

#include "platform/Geometry.h"
#include "ui/controls/SpectrumAxis.h"
#include "ui/draw/Surface.h"

namespace UI::Native {

/// The curve of one spectrum. Lines connect bins in separate columns. If several bins share a column, the curve shows
/// the largest. All bands and ticks reuse the storage.
class SpectrumCurve {
public:
    explicit SpectrumCurve(const SpectrumAxis &pictureAxis);

    /// Computes the curve from linear magnitudes, one per bin in `bins`.
    void trace(const std::vector<float> &magnitudes, const SpectrumAxis::Bins &bins);
    /// Draws the area under the curve, then its outline. `fade` is the inverted alpha.
    void draw(const SurfaceRef &to, uint32_t colour, uint8_t fade) const;

    /// Row of the curve for each column; -1 if there is no curve.
    const std::vector<int32_t> &rows() const { return rowOfColumn; }

private:
    void addPoint(Point point);

    const SpectrumAxis &axis;
    std::vector<int32_t> rowOfColumn;
    std::vector<Point> points; // vertices of the outline
};

} // namespace UI::Native
