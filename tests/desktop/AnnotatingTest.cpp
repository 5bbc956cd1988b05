#include "desktop/AnnotatingTest.h"

#include "base/Geometry.h"
#include "canvas/MarkedPicture.h"
#include "canvas/TextField.h"
#include "look/InterfaceFont.h"

#include <array>

namespace brindlecam::desktop {

namespace {

constexpr auto kColorButton = "Color";
/// The swatches, in the order of Config::palette.
constexpr std::array kColors{"Rojo", "Verde", "Amarillo", "Azul", "Negro", "Blanco"};

/// A place on a button that its symbol leaves free.
QPoint besideSymbol(const QRect& button)
{
    return {button.left() + button.width() / 8, button.center().y()};
}

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
    DesktopOptions named = desktop;
    named.accessibility = Accessibility::on;
    usePatternedDesktop(named);
    if (scale != 1)
        program().setScales(QString::number(scale));
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

bool AnnotatingTest::isChosen(std::optional<Tool> tool)
{
    return waitUntil([&, name = QString::fromUtf8(nameOf(tool))] {
        const auto button = controls().look(name, ControlKind::button);
        return button && button->on && isGreen(screen().pixel(besideSymbol(button->pixels)));
    });
}

bool AnnotatingTest::choose(Tool tool)
{
    return pressTool(tool) && isChosen(tool);
}

bool AnnotatingTest::choosePointer()
{
    return press(nameOf(std::nullopt)) && isChosen(std::nullopt);
}

bool AnnotatingTest::isColored(const char* button, std::size_t color)
{
    const QPoint place = placeOf(button, ControlKind::button).center();
    return waitUntil(
        [&] { return screen().pixel(place).rgb() == Config::palette.at(color).rgb(); });
}

bool AnnotatingTest::openPalette()
{
    return press(kColorButton) && isColored(kColors.front(), 0);
}

bool AnnotatingTest::pick(std::size_t color)
{
    return openPalette() && press(kColors.at(color)) && isColored(kColorButton, color);
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
