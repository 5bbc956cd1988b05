#include "BarPictures.h"

#include "Hand.h"
#include "Photographer.h"
#include "Session.h"
#include "base/Text.h"
#include "canvas/BarButton.h"
#include "canvas/CanvasView.h"
#include "preferences/Prefs.h"

#include <QCoreApplication>
#include <QHelpEvent>

#include <functional>
#include <optional>

namespace brindlecam::pictures {

namespace {

class BarScenes final {
public:
    BarScenes(Photographer& photographer, Prefs& prefs)
        : m_photographer(photographer)
        , m_prefs(prefs)
    {
    }

    void takePlaces();
    void takePopups();
    void takeStates();
    void takeTips();
    void takeMessages();
    void takeTextMessages();

private:
    using Act = std::function<void(Hand&, CanvasView&)>;

    /// `area` in shares of the screen.
    void take(const QString& name, const QRectF& area, const Act& act);

    Photographer& m_photographer;
    Prefs& m_prefs;
};

constexpr double kUsualOpacity = 0.4;

// In shares of the screen.
constexpr QRectF kMiddle(0.2, 0.2, 0.4, 0.5);
constexpr QRectF kAtRight(0.55, 0.3, 0.45, 0.4);
constexpr QRectF kSmall(0.4, 0.4, 0.045, 0.06);

void BarScenes::take(const QString& name, const QRectF& area, const Act& act)
{
    {
        Session session(m_photographer, m_prefs);
        Hand hand(session.canvas());
        const QSizeF size = m_photographer.screen().size();
        const QRectF points(area.x() * size.width(), area.y() * size.height(),
                            area.width() * size.width(), area.height() * size.height());
        hand.select(points);
        hand.move(points.center()); // no loupe there
        if (act)
            act(hand, session.canvas());
        m_photographer.take(QStringLiteral("bars-") + name);
    }
    m_photographer.rest(); // without the overlay
}

void BarScenes::takePlaces()
{
    struct Place {
        const char* name;
        QRectF area;
    };
    constexpr Place kPlaces[] = {
        {"right-below", kMiddle},
        {"left-below", kAtRight},
        {"right-above", {0.2, 0.5, 0.4, 0.5}},
        {"inside-below", {0, 0.2, 1, 0.5}},
        {"right-inside", {0.2, 0, 0.4, 1}},
        {"whole-screen", {0, 0, 1, 1}},
        {"corner-top-left", {0, 0, 0.03, 0.04}},
        {"corner-top-right", {0.97, 0, 0.03, 0.04}},
        {"corner-bottom-left", {0, 0.96, 0.03, 0.04}},
        {"corner-bottom-right", {0.97, 0.96, 0.03, 0.04}},
        {"left-edge-strip", {0, 0.2, 0.02, 0.6}},
        {"bottom-edge-strip", {0.1, 0.97, 0.8, 0.03}},
    };
    for (const Place& place : kPlaces)
        take(QLatin1String(place.name), place.area, {});
}

void BarScenes::takePopups()
{
    const auto openPalette = [](Hand& hand, CanvasView&) { hand.pressControl(text("Color")); };
    take(QStringLiteral("palette"), kMiddle, openPalette);
    take(QStringLiteral("palette-at-left"), kAtRight, openPalette);
    take(QStringLiteral("palette-whole-screen"), {0, 0, 1, 1}, openPalette);
    take(QStringLiteral("palette-corner"), {0.97, 0.96, 0.03, 0.04}, openPalette);
    take(QStringLiteral("palette-faint-blue"), kMiddle, [](Hand& hand, CanvasView&) {
        hand.pressControl(text("Color"));
        hand.pressControl(text("Azul"));
        hand.pressControl(text("Color"));
        hand.pressControl(text("Opacidad del marcador"), 0.1);
    });
    m_prefs.setMarkerOpacity(kUsualOpacity);
    for (const Tool tool : kAllTools) {
        take(QStringLiteral("tool-") + name(tool), kMiddle,
             [tool](Hand& hand, CanvasView&) { hand.pressControl(tooltip(tool)); });
    }
    for (const qreal share : {0.0, 1.0}) {
        take(QStringLiteral("slider-at-%1").arg(share), kMiddle, [share](Hand& hand, CanvasView&) {
            hand.pressControl(tooltip(Tool::pen));
            hand.pressControl(sizeLabel(Tool::pen).value(), share);
        });
        m_prefs.setSize(sizes(Tool::pen)->standard, Tool::pen);
    }
}

void BarScenes::takeStates()
{
    const auto hover = [](QWidget& widget) {
        widget.setAttribute(Qt::WA_UnderMouse);
        widget.update();
    };
    take(QStringLiteral("hovered"), kMiddle, [&](Hand& hand, CanvasView&) {
        hand.pressControl(tooltip(Tool::arrow));
        hover(hand.control(tooltip(Tool::arrow)));
        hover(hand.control(tooltip(Tool::text)));
        hover(hand.control(text("Color")));
        hover(hand.control(sizeLabel(Tool::arrow).value()));
        hover(hand.control(text("Copiar (⌘C o Enter)")));
    });
    take(QStringLiteral("pressed"), kMiddle, [](Hand& hand, CanvasView&) {
        hand.pressControl(tooltip(Tool::arrow));
        for (const QString& name :
             {tooltip(Tool::arrow), tooltip(Tool::text), text("Copiar (⌘C o Enter)")})
            dynamic_cast<BarButton&>(hand.control(name)).setDown(true);
    });
    {
        Session session(m_photographer, m_prefs);
        using Action = Toolbar::Action;
        session.canvas().setUnavailable({Action::text, Action::pin, Action::scroll, Action::gif});
        Hand hand(session.canvas());
        hand.draw({300, 200}, {700, 500});
        m_photographer.take(QStringLiteral("bars-disabled"));
    }
    m_photographer.rest();
    const auto focus = [&](const char* name, Tool tool, const QString& control) {
        take(QLatin1String(name), kMiddle, [=](Hand& hand, CanvasView&) {
            hand.pressControl(tooltip(tool));
            hand.control(control).setFocus(Qt::TabFocusReason);
        });
    };
    focus("focus-button", Tool::arrow, tooltip(Tool::line));
    focus("focus-on-button", Tool::arrow, tooltip(Tool::arrow));
    focus("focus-slider", Tool::arrow, sizeLabel(Tool::arrow).value());
    focus("focus-swatch", Tool::arrow, text("Color"));
}

void BarScenes::takeTips()
{
    const auto rest = [](QWidget& control) {
        const QPoint at = control.rect().center();
        QHelpEvent event(QEvent::ToolTip, at, control.mapToGlobal(at));
        QCoreApplication::sendEvent(&control, &event);
    };
    const auto over = [&rest](const QString& control) {
        return [=](Hand& hand, CanvasView&) { rest(hand.control(control)); };
    };
    const auto inPopup = [&rest](const QString& button, const QString& control) {
        return [=](Hand& hand, CanvasView&) {
            hand.pressControl(button);
            rest(hand.control(control));
        };
    };
    const QString color = text("Color");
    const QString copy = text("Copiar (⌘C o Enter)");
    const QString scroll = text("Captura con desplazamiento (páginas largas)");
    constexpr QRectF kWhole(0, 0, 1, 1);
    take(QStringLiteral("tip-tool"), kMiddle, over(tooltip(Tool::line)));
    take(QStringLiteral("tip-of-two-lines"), kMiddle, over(tooltip(Tool::number)));
    take(QStringLiteral("tip-tool-at-left"), kAtRight, over(tooltip(Tool::line)));
    take(QStringLiteral("tip-tool-whole-screen"), kWhole, over(tooltip(Tool::number)));
    take(QStringLiteral("tip-action"), kMiddle, over(copy));
    take(QStringLiteral("tip-action-above"), {0.2, 0.5, 0.4, 0.5}, over(scroll));
    take(QStringLiteral("tip-action-whole-screen"), kWhole, over(text("Cerrar (Esc)")));
    take(QStringLiteral("tip-beside-palette"), kMiddle, inPopup(color, color));
    take(QStringLiteral("tip-near-palette"), kMiddle, inPopup(color, tooltip(Tool::pixelate)));
    take(QStringLiteral("tip-in-palette"), kMiddle, inPopup(color, text("Opacidad del marcador")));
    take(QStringLiteral("tip-in-sizes"), kMiddle,
         inPopup(tooltip(Tool::pen), text("Más fino / pequeño")));
    take(QStringLiteral("tip-small-area"), kSmall, over(scroll));
}

void BarScenes::takeMessages()
{
    const auto turn = [](Tool tool, int notches) {
        return [=](Hand& hand, CanvasView&) {
            hand.pressControl(tooltip(tool));
            hand.turn(notches);
        };
    };
    take(QStringLiteral("message-size"), kMiddle, turn(Tool::arrow, 2));
    take(QStringLiteral("message-opacity"), kMiddle, turn(Tool::marker, 2));
    take(QStringLiteral("message-size-small-area"), kSmall, turn(Tool::number, 1));
    const auto scroll = [](Hand&, CanvasView& canvas) { canvas.actions().scrollCapture(); };
    const auto gif = [](Hand&, CanvasView& canvas) { canvas.actions().recordGif(); };
    take(QStringLiteral("message-scroll"), kSmall, scroll);
    take(QStringLiteral("message-scroll-corner"), {0.97, 0.96, 0.03, 0.04}, scroll);
    take(QStringLiteral("message-gif"), {0.4, 0.4, 0.02, 0.03}, gif);
    take(QStringLiteral("message-gif-corner"), {0, 0, 0.02, 0.03}, gif);
    m_prefs.setMarkerOpacity(kUsualOpacity);
    m_prefs.setSize(sizes(Tool::arrow)->standard, Tool::arrow);
    m_prefs.setSize(sizes(Tool::number)->standard, Tool::number);
}

void BarScenes::takeTextMessages()
{
    struct Place {
        const char* name;
        QRectF points;
    };
    const QSizeF size = m_photographer.screen().size();
    const Place places[] = {
        {"", {size.width() * 0.2, size.height() * 0.2, size.width() * 0.4, size.height() * 0.5}},
        {"-narrow-left", {0, 200, 120, 300}},
        {"-narrow-right", {size.width() - 120, 200, 120, 300}},
        {"-low", {300, size.height() - 20, 120, 20}},
    };
    struct Message {
        const char* name;
        std::optional<Result<QStringList>> text;
    };
    const Message messages[] = {
        {"message-reading", std::nullopt},
        {"message-no-text", Result<QStringList>(QStringList())},
        {"message-text-error",
         Result<QStringList>(Error{text("faltan los datos de idioma (tesseract-ocr-spa o "
                                        "tesseract-ocr-eng)")})},
    };
    for (const Message& message : messages) {
        for (const Place& place : places) {
            {
                Session session(m_photographer, m_prefs);
                Hand hand(session.canvas());
                hand.select(place.points);
                hand.move(place.points.center());
                if (message.text)
                    session.setText(*message.text);
                session.canvas().actions().recognizeText();
                m_photographer.take(QStringLiteral("bars-") + QLatin1String(message.name) +
                                    QLatin1String(place.name));
            }
            m_photographer.rest(); // without the overlay
        }
    }
}

} // namespace

void takeBarPictures(Photographer& photographer, Prefs& prefs)
{
    BarScenes scenes(photographer, prefs);
    scenes.takePlaces();
    scenes.takePopups();
    scenes.takeStates();
    scenes.takeTips();
    scenes.takeMessages();
    scenes.takeTextMessages();
}

} // namespace brindlecam::pictures
