#pragma once
#include <vector>

#include "platform/Geometry.h"
#include "ui/controls/SpectrumAxis.h"
#include "ui/draw/Surface.h"

namespace UI::Native {

/// The curve of one spectrum: where bins lie far apart they are joined by lines, where several share a column
/// the greatest of them shows. Its storage is reused from band to band and tick to tick.
class SpectrumCurve {
public:
    explicit SpectrumCurve(const SpectrumAxis &pictureAxis);

    /// Takes magnitudes, linear, one for each bin of `bins`.
    void trace(const std::vector<float> &magnitudes, const SpectrumAxis::Bins &bins);
    /// Lays the area under the curve, then its outline, over the picture; `fade` is the inverted alpha.
    void draw(const SurfaceRef &to, uint32_t colour, uint8_t fade) const;

    /// By column: the row of the curve, or -1 where there is none.
    const std::vector<int32_t> &rows() const { return rowOfColumn; }

private:
    void addPoint(Point point);

    const SpectrumAxis &axis;
    std::vector<int32_t> rowOfColumn;
    std::vector<Point> points; // joined by the outline
};

} // namespace UI::Native
