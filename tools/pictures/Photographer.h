#pragma once

#include "base/ScreenInfo.h"

#include <QImage>
#include <QRect>
#include <QString>

#include <functional>

namespace brindlecam {

struct Platform;

namespace pictures {

/// Takes pictures of the screen and puts them into a folder, as PNG files. Main thread; native
/// pixels.
class Photographer final {
public:
    Photographer(Platform& platform, QString folder);

    /// The whole primary screen, once nothing on it moves any more.
    void take(const QString& name);
    /// A part of it (pixels), as it is now.
    void takeNow(const QString& name, const QRect& native);
    void keep(const QString& name, const QImage& image);

    /// The primary display.
    [[nodiscard]] ScreenInfo screen() const;
    [[nodiscard]] Platform& platform() { return m_platform; }

    /// Lets the loop run until the condition holds; ends the program with a message when it never
    /// does.
    void await(const QString& what, const std::function<bool()>& condition);
    /// Lets the loop run until two looks at the screen in a row are equal.
    void rest();

    /// What a part of the primary display shows now.
    [[nodiscard]] QImage look(const QRect& native);

private:
    Platform& m_platform;
    QString m_folder;
};

} // namespace pictures

} // namespace brindlecam
