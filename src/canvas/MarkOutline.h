#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QRegion>

#include <vector>

class QPainter;

namespace brindlecam {

/// The dashed line around the selected mark, at some distance from it. Points; painted part by
/// part, with the same pixels as in one go.
class MarkOutline final {
public:
    /// Around a mark of these bounds.
    explicit MarkOutline(const QRectF& bounds);

    /// What the line around a mark of these bounds covers.
    [[nodiscard]] static QRegion covered(const QRectF& bounds, qreal scale);

    /// What may show within `visible`, with a painter that counts in points.
    void paint(QPainter& painter, const QRectF& visible) const;

private:
    struct Dashes {
        QPainterPath path;
        QRectF bounds;
    };
    void addGroup(QPainterPath& group);

    QRectF m_rect;
    std::vector<Dashes> m_dashes; ///< some at a time
};

} // namespace brindlecam
