#pragma once

#include <QImage>

#include <new>
#include <utility>

namespace brindlecam {

/// The picture, or std::bad_alloc: Qt hands out a null picture when there is no memory for one, and
/// writing into that would end the program.
[[nodiscard]] inline QImage allocated(QImage picture)
{
    if (picture.isNull())
        throw std::bad_alloc();
    return picture;
}

} // namespace brindlecam
