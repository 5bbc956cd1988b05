#pragma once

#include "canvas/BarButton.h"
#include "canvas/CanvasView.h"
#include "pictures/Dimming.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/FakeTextRecognizer.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace brindlecam::test {

/// A canvas over a picture whose every pixel is known, with a hand on it. Places are points of the
/// canvas.
struct CanvasFixture {
    static constexpr QSize kPixels{400, 300};
    static constexpr QPoint kNativeOrigin{1920, 40};

    static QImage gradient()
    {
        QImage image(kPixels, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                image.setPixel(x, y, qRgb(x % 256, y % 256, (x + y) % 256));
        }
        return image;
    }

    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    QImage image = gradient();
    std::vector<Outcome> outcomes;
    std::vector<Rendered> autoCopied;
    FakeTextRecognizer recognizer;
    std::unique_ptr<CanvasView> canvas;

    explicit CanvasFixture(QSizeF size = kPixels)
    {
        canvas = std::make_unique<CanvasView>(
            prefs, recognizer,
            CanvasView::Frozen{.image = image, .size = size, .nativeOrigin = kNativeOrigin},
            nullptr);
        canvas->resize(size.toSize());
        canvas->onFinish = [this](const Outcome& outcome) { outcomes.push_back(outcome); };
        canvas->onAutoCopy = [this](const Rendered& picture) { autoCopied.push_back(picture); };
    }

    void press(QPoint at, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mousePress(canvas.get(), Qt::LeftButton, modifiers, at);
    }
    void release(QPoint at, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseRelease(canvas.get(), Qt::LeftButton, modifiers, at);
    }
    void move(QPoint to) { QTest::mouseMove(canvas.get(), to); }
    void click(QPoint at)
    {
        press(at);
        release(at);
    }
    void drag(QPoint from, QPoint to)
    {
        move(from);
        press(from);
        move((from + to) / 2);
        move(to);
        release(to);
    }
    void key(Qt::Key which, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(canvas.get(), which, modifiers);
    }

    /// The button with this name, or null.
    [[nodiscard]] BarButton* button(const QString& name) const
    {
        const auto buttons = canvas->findChildren<BarButton*>();
        const auto found = std::ranges::find_if(
            buttons, [&](const BarButton* button) { return button->accessibleName() == name; });
        return found == buttons.end() ? nullptr : *found;
    }
    void clickButton(const QString& name)
    {
        BarButton* named = button(name);
        if (!named)
            QFAIL(qPrintable(QStringLiteral("no button ") + name));
        QTest::mouseClick(named, Qt::LeftButton);
    }
    void choose(Tool tool) { clickButton(tooltip(tool)); }

    [[nodiscard]] const AnnotationList::Marks& marks() const
    {
        return canvas->editor().annotations();
    }
    [[nodiscard]] const Annotation& mark(std::size_t index) const { return *marks().at(index); }
};

} // namespace brindlecam::test
