#include "canvas/AnnotationList.h"

#include <algorithm>

namespace brindlecam {

void AnnotationList::checkpoint()
{
    m_earlier.push_back(m_marks);
    m_later.clear();
}

AnnotationList::Mark AnnotationList::append(Annotation mark)
{
    checkpoint();
    m_marks.push_back(std::make_shared<const Annotation>(std::move(mark)));
    return m_marks.back();
}

AnnotationList::Mark AnnotationList::replace(const Mark& old, Annotation changed)
{
    const auto place = std::find(m_marks.begin(), m_marks.end(), old);
    if (place == m_marks.end())
        return nullptr;
    *place = std::make_shared<const Annotation>(std::move(changed));
    return *place;
}

bool AnnotationList::remove(const Mark& mark)
{
    const auto place = std::find(m_marks.begin(), m_marks.end(), mark);
    if (place == m_marks.end())
        return false;
    checkpoint();
    m_marks.erase(place);
    return true;
}

bool AnnotationList::undo()
{
    if (m_earlier.empty())
        return false;
    m_later.push_back(std::move(m_marks));
    m_marks = std::move(m_earlier.back());
    m_earlier.pop_back();
    return true;
}

bool AnnotationList::redo()
{
    if (m_later.empty())
        return false;
    m_earlier.push_back(std::move(m_marks));
    m_marks = std::move(m_later.back());
    m_later.pop_back();
    return true;
}

void AnnotationList::clear()
{
    m_marks.clear();
    m_earlier.clear();
    m_later.clear();
}

int AnnotationList::nextNumber(const QColor& color) const
{
    int highest = 0;
    for (const Mark& mark : m_marks) {
        if (mark->tool() == Tool::number && mark->color() == color)
            highest = std::max(highest, mark->number());
    }
    return highest + 1;
}

AnnotationList::Mark AnnotationList::topmostAt(QPointF point) const
{
    const auto hit = std::find_if(m_marks.rbegin(), m_marks.rend(),
                                  [point](const Mark& mark) { return mark->hitTest(point); });
    return hit == m_marks.rend() ? nullptr : *hit;
}

} // namespace brindlecam
