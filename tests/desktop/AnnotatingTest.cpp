#include "desktop/AnnotatingTest.h"

#include "app/InterfaceFont.h"
#include "base/Geometry.h"
#include "canvas/BarButton.h"
#include "canvas/BarPlacement.h"
#include "canvas/MarkedPicture.h"
#include "canvas/TextField.h"

#include <algorithm>

namespace brindlecam::desktop {

namespace {

// Points.
constexpr int kBarPadding = 4;
constexpr int kPace = BarButton::kSide + 2;
constexpr QSize kToolsBar(38, 12 * kPace - 2 + 2 * kBarPadding);
constexpr QSize kActionsBar(7 * kPace - 2 + 2 * kBarPadding, 38);
constexpr QSize kPalette(198, 70);
constexpr QPointF kHalfButton(BarButton::kSide / 2.0, BarButton::kSide / 2.0);
/// A place on a button that its symbol leaves free.
constexpr QPointF kBesideSymbol(4, BarButton::kSide / 2.0);

/// Leaf green, also the lighter one under the pointer.
bool isGreen(const QColor& color)
{
    constexpr int kMuch = 80;
    return color.green() > color.red() + kMuch && color.green() > color.blue() + kMuch;
}

AnnotationList::Marks shared(const std::vector<Annotation>& marks)
{
    AnnotationList::Marks all;
    for (const Annotation& mark : marks)
        all.push_back(std::make_shared<const Annotation>(mark));
    return all;
}

} // namespace

void drawOffscreen()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

void installFonts()
{
    InterfaceFont::install(QStringLiteral("Inter"));
}

void AnnotatingTest::useProgram(const QJsonObject& settings, qreal scale,
                                const DesktopOptions& desktop)
{
    m_scale = scale;
    usePatternedDesktop(desktop);
    if (scale != 1)
        program().environment().insert(QStringLiteral("QT_SCREEN_SCALE_FACTORS"),
                                       QString::number(scale));
    QJsonObject all = settings;
    all.insert(QStringLiteral("showLoupe"), false);
    program().writeSettings(all);
    startProgram();
    input().moveTo({1200, 700});
    m_frozen = screen().grabAtRest();
}

bool AnnotatingTest::annotates(const QJsonObject& settings, qreal scale)
{
    useProgram(settings, scale);
    return selects();
}

bool AnnotatingTest::selects()
{
    if (!openArea())
        return false;
    drag(kSelected.topLeft(), kSelected.bottomRight());
    return isChosen(std::nullopt);
}

// The bars.

QRect AnnotatingTest::toolsBar(const QRectF& selection) const
{
    return BarPlacement::toolsBar(selection, canvas(), kToolsBar);
}

QRect AnnotatingTest::actionsBar(const QRectF& selection) const
{
    return BarPlacement::actionsBar(selection, canvas(), kActionsBar);
}

QPointF AnnotatingTest::toolsButton(int index) const
{
    return toolsBar().topLeft() + QPointF(kBarPadding, kBarPadding + kPace * index);
}

QRect AnnotatingTest::popup(int button, QSize size) const
{
    const QPointF centre = toolsButton(button) + kHalfButton;
    return BarPlacement::popup(toolsBar(), static_cast<int>(centre.y()), size, canvas());
}

QRect AnnotatingTest::paletteRect() const
{
    return popup(kColorButton, kPalette);
}

QPointF AnnotatingTest::swatch(int index) const
{
    return paletteRect().topLeft() + QPointF(kBarPadding + kPace * index, kBarPadding);
}

bool AnnotatingTest::isChosen(std::optional<Tool> tool)
{
    const int index = tool ? 1 + static_cast<int>(*tool) : 0;
    const QPoint place = pixel(toolsButton(index) + kBesideSymbol);
    return waitUntil([&] { return isGreen(screen().pixel(place)); });
}

bool AnnotatingTest::choose(Tool tool)
{
    pressTool(tool);
    return isChosen(tool);
}

bool AnnotatingTest::choosePointer()
{
    pressButton(0);
    return isChosen(std::nullopt);
}

void AnnotatingTest::pressButton(int index)
{
    click(toolsButton(index) + kHalfButton);
}

bool AnnotatingTest::isColored(QPointF place, int index)
{
    const QRgb color = Config::palette.at(static_cast<std::size_t>(index)).rgb();
    return waitUntil([&] { return screen().pixel(pixel(place)).rgb() == color; });
}

bool AnnotatingTest::openPalette()
{
    pressButton(kColorButton);
    return isColored(swatch(0) + kHalfButton, 0);
}

bool AnnotatingTest::pick(int index)
{
    if (!openPalette())
        return false;
    click(swatch(index) + kHalfButton);
    return isColored(toolsButton(kColorButton) + kHalfButton, index);
}

void AnnotatingTest::press(Toolbar::Action action, const QRectF& selection)
{
    click(actionsBar(selection).topLeft() +
          QPointF(kBarPadding + kPace * static_cast<int>(action), 4) + kHalfButton);
}

// The hands.

bool AnnotatingTest::strokeReaches(QPointF point)
{
    const QPoint place = pixel(point);
    const QRgb before = screen().pixel(place).rgb();
    input().moveTo(place);
    return waitUntil([&] { return screen().pixel(place).rgb() != before; });
}

void AnnotatingTest::tap(std::initializer_list<Qt::Key> keys)
{
    for (const Qt::Key key : keys)
        input().tap(key);
}

// The model.

Annotation AnnotatingTest::mark(Tool tool, QPointF from, QPointF to) const
{
    Annotation made(tool, Config::palette.front(), from);
    made.setEnd(to);
    if (tool == Tool::pixelate) {
        const QSize size = m_frozen.size();
        made.setPixelated(Pixelation::of(m_frozen, pixelRect(made.rect(), canvas(), size),
                                         Pixelation::cellPixels(pixelsPerPoint(canvas(), size))));
    }
    return made;
}

Annotation AnnotatingTest::badge(QPointF at, int number, const QColor& color)
{
    Annotation made(Tool::number, color, at);
    made.setLineWidth(sizes(Tool::number)->standard);
    made.setNumber(number);
    return made;
}

Annotation AnnotatingTest::typed(QPointF at, const QString& text, const QColor& color)
{
    const QRectF field = TextField::place(at, kSelected);
    Annotation made(Tool::text, color, field.topLeft());
    made.setText(text, field.height());
    return made;
}

QImage AnnotatingTest::picture(const Marks& marks, const QRectF& selection) const
{
    return flattened(m_frozen, canvas(), pixels(selection), shared(marks));
}

bool AnnotatingTest::isPastedWith(const Marks& marks, const QRectF& selection)
{
    return isPasted(picture(marks, selection));
}

bool AnnotatingTest::returnTakes(const Marks& marks, const QRectF& selection)
{
    const QImage expected = picture(marks, selection);
    input().tap(Qt::Key_Return);
    return sessionIsOver() && isPasted(expected) && isOnlyCapture(expected) &&
           isOnlyInHistory(expected);
}

bool AnnotatingTest::shows(const Marks& marks, const QRectF& area)
{
    const QImage expected = picture(marks, area);
    return waitUntil([&] { return samePixels(seen(area), expected); });
}

QImage AnnotatingTest::seen(const QRectF& area)
{
    return screen().grab(pixels(area));
}

QPoint AnnotatingTest::pixel(QPointF point) const
{
    return (point * m_scale).toPoint();
}

QRect AnnotatingTest::pixels(const QRectF& points) const
{
    return pixelRect(points, canvas(), m_frozen.size());
}

} // namespace brindlecam::desktop
