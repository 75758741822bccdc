#include "chart/geometry/RingLayout.h"

#include <algorithm>

namespace veltrano {

void RingLayout::setBounds(const QRectF& bounds) {
    m_Center = bounds.topLeft() + 0.5 * QPointF(bounds.width(), bounds.height());
    m_fullRadius = static_cast<float>(std::min(bounds.width(), bounds.height()) * 0.5 * 0.95);
}

bool CanDrawItem(const RingLayout& layout, const FileSystemItem& item, int withSubLevel) {
    return CanDrawItem(item, layout.getFraction(item.gettotalsize()), layout.getCircumference(withSubLevel));
}

} // namespace veltrano
