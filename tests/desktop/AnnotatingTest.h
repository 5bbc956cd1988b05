#pragma once

#include "base/Tool.h"
#include "canvas/AnnotationList.h"
#include "desktop/ToolNames.h"
#include "desktop/support/CaptureTest.h"
#include "preferences/Config.h"

#include <QApplication>
#include <QColor>
#include <QJsonObject>
#include <QPointF>
#include <QRectF>

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <vector>

namespace brindlecam::desktop {

/// Base of the tests that draw marks with the real program and compare what it copies with what the
/// pure model draws. Unless a name says pixels, places are points of the canvas, whole enough to
/// name one pixel at every scale used: multiples of two.
class AnnotatingTest : public CaptureTest {
    Q_OBJECT

protected:
    using Marks = std::vector<Annotation>;

    static constexpr QRectF kSelected{120, 60, 240, 200};

    /// Starts the program on a patterned desktop, without the loupe.
    void useProgram(const QJsonObject& settings = {}, qreal scale = 1,
                    const DesktopOptions& desktop = {});
    /// The same, and a session with kSelected selected and the bars around it.
    [[nodiscard]] bool annotates(const QJsonObject& settings = {}, qreal scale = 1);
    /// Opens a session and selects kSelected.
    [[nodiscard]] bool selects();

    // The bars. Each answers whether the program followed.
    [[nodiscard]] bool choose(Tool tool);
    [[nodiscard]] bool choosePointer();
    /// Presses the tool's button, whatever follows.
    [[nodiscard]] bool pressTool(Tool tool) { return press(nameOf(tool)); }
    [[nodiscard]] bool openPalette();
    /// Opens the palette and picks the colour with this place in Config::palette.
    [[nodiscard]] bool pick(std::size_t color);
    /// Whether the button of this tool is the chosen one, is told to be, and looks so; none: the
    /// pointer's.
    [[nodiscard]] bool isChosen(std::optional<Tool> tool);

    // The pointer, on the canvas.
    void moveTo(QPointF point) { input().moveTo(pixel(point)); }
    void click(QPointF point) { input().click(pixel(point)); }
    void drag(QPointF from, QPointF to) { input().drag(pixel(from), pixel(to)); }
    /// Goes on with a stroke and waits until it is seen at its new end, so that no move on the way
    /// is skipped.
    [[nodiscard]] bool strokeReaches(QPointF point);

    /// Types these keys one after another.
    void tap(std::initializer_list<Qt::Key> keys);

    // What the marks must look like.
    /// A mark between two ends, in the colour, sizes and opacity of an untouched program.
    [[nodiscard]] Annotation mark(Tool tool, QPointF from, QPointF to) const;
    [[nodiscard]] static Annotation badge(QPointF at, int number,
                                          const QColor& color = Config::palette.front());
    /// A text begun by a click at this place.
    [[nodiscard]] static Annotation typed(QPointF at, const QString& text,
                                          const QColor& color = Config::palette.front());
    /// The picture of a selection with these marks.
    [[nodiscard]] QImage picture(const Marks& marks, const QRectF& selection = kSelected) const;
    /// Waits until the clipboard holds the picture with these marks.
    [[nodiscard]] bool isPastedWith(const Marks& marks, const QRectF& selection = kSelected);
    /// Ends the session by Return and tells whether clipboard, folder and history get this picture.
    [[nodiscard]] bool returnTakes(const Marks& marks, const QRectF& selection = kSelected);

    // What is seen of a selection.
    /// Waits until an area of the screen looks as with these marks.
    [[nodiscard]] bool shows(const Marks& marks, const QRectF& area);
    [[nodiscard]] QImage seen(const QRectF& area);

    [[nodiscard]] QPoint pixel(QPointF point) const;
    [[nodiscard]] QRect pixels(const QRectF& points) const;
    [[nodiscard]] QSizeF canvas() const { return QSizeF(m_frozen.size()) / m_scale; }
    [[nodiscard]] const QImage& frozen() const { return m_frozen; }

private:
    [[nodiscard]] bool isColored(const char* button, std::size_t color);

    qreal m_scale = 1;
    QImage m_frozen; ///< the whole screen before the session
};

/// Before the application object: it needs no screen of its own.
void drawOffscreen();
/// After it: texts look as in the program.
void installFonts();

/// Runs a test class that draws marks itself.
template <typename Test>
int runAnnotating(int argc, char* argv[])
{
    drawOffscreen();
    QApplication application(argc, argv);
    installFonts();
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace brindlecam::desktop
