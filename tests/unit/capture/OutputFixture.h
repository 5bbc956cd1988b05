#pragma once

#include "capture/Output.h"
#include "history/History.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/FakePasteboard.h"
#include "support/GatedExecutor.h"

#include <QColor>
#include <QImage>
#include <QTemporaryDir>

#include <optional>
#include <random>

namespace brindlecam::test {

/// A picture of one colour, at two pixels per point.
inline Rendered plain(QColor colour, QSize pixels = {40, 30})
{
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(colour);
    return {image, QSizeF(pixels) / 2};
}

/// A photograph of nothing: slow to encode, and not to be packed.
inline Rendered noise(QSize pixels)
{
    QImage image(pixels, QImage::Format_RGB32);
    std::minstd_rand random(1);
    for (int y = 0; y < pixels.height(); ++y) {
        for (int x = 0; x < pixels.width(); ++x)
            image.setPixel(x, y, 0xff000000U | static_cast<QRgb>(random()));
    }
    return {image, pixels};
}

inline QColor colourOf(const QImage& image)
{
    return image.isNull() ? QColor() : image.pixelColor(0, 0);
}

inline QColor colourOfFile(const QString& path)
{
    return colourOf(QImage(path));
}

/// An output whose work runs when the test lets it.
struct OutputFixture {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    FakePasteboard pasteboard;
    History history{{folder.filePath(QStringLiteral("historia"))}};
    GatedExecutor gate;
    Output output{pasteboard, history, prefs, gate.executor()};

    ~OutputFixture() { settle(); }

    [[nodiscard]] QString file(const QString& name = QStringLiteral("a.png")) const
    {
        return folder.filePath(QStringLiteral("capturas/") + name);
    }
    [[nodiscard]] QColor shownColour() const { return colourOf(pasteboard.picture()); }

    // Lets everything run in the order it was handed in.
    void settle()
    {
        do {
            sendAllPostedEvents();
            if (!gate.jobs.empty())
                gate.run(0);
            sendAllPostedEvents();
        } while (!gate.jobs.empty());
    }
    void runAndDeliver(std::size_t index)
    {
        gate.run(index);
        sendAllPostedEvents();
    }
};

} // namespace brindlecam::test
