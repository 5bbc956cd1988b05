#include "MarkPictures.h"

#include "Hand.h"
#include "Photographer.h"
#include "Session.h"
#include "base/Text.h"
#include "canvas/CanvasView.h"
#include "preferences/Prefs.h"

#include <array>
#include <cmath>
#include <functional>

namespace brindlecam::pictures {

namespace {

// Points of a screen that is at least 1280 × 800 of them large.
constexpr QRectF kSelection(240, 130, 640, 560);
constexpr QPointF kFirst(270, 170);
constexpr qreal kAcross = 180;
constexpr qreal kDown = 130;

constexpr std::array kColors{"Rojo", "Verde", "Amarillo", "Azul", "Negro", "Blanco"};

class MarkScenes final {
public:
    MarkScenes(Photographer& photographer, Prefs& prefs)
        : m_photographer(photographer)
        , m_prefs(prefs)
    {
    }

    void takeSizes();
    void takeTexts();
    void takeBadges();
    void takePixelation();
    void takeSelected();
    void takeCutOff();

private:
    using Act = std::function<void(Hand&, CanvasView&)>;

    void take(const QString& name, const Act& act);

    Photographer& m_photographer;
    Prefs& m_prefs;
};

void MarkScenes::take(const QString& name, const Act& act)
{
    {
        Session session(m_photographer, m_prefs);
        Hand hand(session.canvas());
        hand.select(kSelection);
        act(hand, session.canvas());
        m_photographer.take(QStringLiteral("marks-") + name);
    }
    m_photographer.rest(); // without the overlay
}

void choose(Hand& hand, Tool tool)
{
    hand.pressControl(tooltip(tool));
}

void choosePointer(Hand& hand)
{
    hand.pressControl(text("Mover la selección o una anotación (⌫ la borra)"));
}

void chooseColor(Hand& hand, const char* name)
{
    hand.pressControl(text("Color"));
    hand.pressControl(text(name));
}

/// A mark of the chosen tool that fills about this much; strokes go in waves.
void drawMark(Hand& hand, Tool tool, QPointF from, QSizeF size)
{
    hand.press(from);
    if (tool == Tool::pen || tool == Tool::marker) {
        constexpr int kSteps = 40;
        for (int i = 1; i <= kSteps; ++i) {
            const qreal along = static_cast<qreal>(i) / kSteps;
            hand.move(from +
                      QPointF(along * size.width(), std::sin(along * 9) * size.height() / 2));
        }
    } else if (tool != Tool::number) {
        hand.move(from + QPointF(size.width(), size.height()));
    }
    hand.release();
}

/// Every tool with sizes: from top to bottom the least, the usual and the largest, each in three
/// lengths.
void MarkScenes::takeSizes()
{
    constexpr std::array kExtents{QSizeF(120, 90), QSizeF(120, 0), QSizeF(14, 10)};
    for (const Tool tool : kAllTools) {
        const std::optional<ToolSizes> range = sizes(tool);
        if (!range)
            continue;
        take(name(tool), [&](Hand& hand, CanvasView&) {
            choose(hand, tool);
            qreal y = kFirst.y();
            for (const qreal size : {range->minimum, range->standard, range->maximum}) {
                m_prefs.setSize(size, tool);
                qreal x = kFirst.x();
                for (const QSizeF& extent : kExtents) {
                    drawMark(hand, tool, {x, y}, extent);
                    x += kAcross;
                }
                y += kDown;
            }
        });
        m_prefs.setSize(range->standard, tool);
    }
}

void MarkScenes::takeTexts()
{
    const QString plain = QStringLiteral("Aquí sube: ÁÑgjpqy 123");
    const QString mixed = QStringLiteral("שלום 1️⃣ 👍🏽 abc (2)");
    // The same text while it is typed and afterwards: it must not move.
    for (const QString& each : {plain, mixed}) {
        const QString name = each == plain ? QStringLiteral("plain") : QStringLiteral("mixed");
        take(QStringLiteral("text-typed-") + name, [&](Hand& hand, CanvasView&) {
            choose(hand, Tool::text);
            hand.click(kFirst);
            hand.type(each);
        });
        take(QStringLiteral("text-finished-") + name, [&](Hand& hand, CanvasView&) {
            choose(hand, Tool::text);
            hand.click(kFirst);
            hand.type(each);
            hand.key(Qt::Key_Return);
        });
    }
    take(QStringLiteral("text-empty"), [&](Hand& hand, CanvasView&) {
        choose(hand, Tool::text);
        hand.click({kSelection.right() - 30, kFirst.y()}); // with little room
    });
    // Each typed and finished, the last one in its field.
    take(QStringLiteral("text-scripts"), [&](Hand& hand, CanvasView&) {
        const std::array kTexts{
            QStringLiteral("🍃 Emoji 👍🏽 👩‍👧 🇪🇸 1️⃣"),
            QStringLiteral("שלום עולם (1) abc"),
            QStringLiteral("مرحبا بالعالم"),
            QStringLiteral("e\u0301 n\u0303 a\u0323\u0302 Z\u0351\u036b\u0343"),
            QStringLiteral("日本語 한국어 Ελληνικά Ж"),
            QString(400, QLatin1Char('m')),
        };
        choose(hand, Tool::text);
        QPointF at = kFirst;
        for (const QString& each : kTexts) {
            hand.click(at);
            hand.type(each);
            at.ry() += 50;
        }
    });
    take(QStringLiteral("text-colors"), [&](Hand& hand, CanvasView&) {
        choose(hand, Tool::text);
        QPointF at = kFirst;
        for (const char* color : kColors) {
            chooseColor(hand, color);
            hand.click(at);
            hand.type(text(color));
            hand.key(Qt::Key_Return);
            at.ry() += 40;
        }
    });
}

/// Each colour to 13, red to 101.
void MarkScenes::takeBadges()
{
    take(QStringLiteral("badges"), [&](Hand& hand, CanvasView&) {
        choose(hand, Tool::number);
        QPointF row = kFirst;
        for (const char* color : kColors) {
            chooseColor(hand, color);
            for (int i = 0; i < 13; ++i)
                hand.click(row + QPointF(40 * i, 0));
            row.ry() += 40;
        }
        chooseColor(hand, kColors.front());
        for (int number = 14; number < 99; ++number)
            hand.click(row);
        QPointF at = row + QPointF(60, 0);
        for (const double size : {26.0, 26.0, 26.0, 16.0, 20.0, 36.0, 48.0}) {
            m_prefs.setSize(size, Tool::number);
            hand.click(at);
            at.rx() += 60;
        }
    });
    m_prefs.setSize(sizes(Tool::number)->standard, Tool::number);
}

void MarkScenes::takePixelation()
{
    take(QStringLiteral("pixelate"), [](Hand& hand, CanvasView&) {
        choose(hand, Tool::pixelate);
        hand.draw({250, 225}, {560, 290});
        hand.draw({700, 420}, {kSelection.right() + 50, 520}); // ends at the selection's edge
        hand.draw({300, 560}, {303, 620});                     // narrower than a cell
        chooseColor(hand, "Azul");
        choose(hand, Tool::rect);
        hand.draw({250, 225}, {560, 290}); // where its edges should be
        choose(hand, Tool::pixelate);
        hand.drag({420, 400}, {560, 500}); // while it is dragged
    });
}

void MarkScenes::takeSelected()
{
    const std::array kPlaces{
        QPointF(270, 200), QPointF(450, 180), QPointF(630, 180), QPointF(270, 330),
        QPointF(450, 360), QPointF(630, 330), QPointF(700, 480), QPointF(270, 480),
    };
    for (const Tool selected : {Tool::pen, Tool::arrow, Tool::text, Tool::number}) {
        take(QStringLiteral("selected-") + name(selected), [&](Hand& hand, CanvasView&) {
            for (const Tool tool : kAllTools) {
                const QPointF at = kPlaces.at(static_cast<std::size_t>(tool));
                choose(hand, tool);
                drawMark(hand, tool, at, {110, 70});
                if (tool == Tool::text)
                    hand.type(QStringLiteral("Aquí"));
            }
            choosePointer(hand);
            hand.click(kPlaces.at(static_cast<std::size_t>(selected)) + QPointF(2, 1));
        });
    }
}

/// Marks that reach over the selection's edge once it has become smaller.
void MarkScenes::takeCutOff()
{
    take(QStringLiteral("cut-off"), [](Hand& hand, CanvasView&) {
        choose(hand, Tool::arrow);
        hand.draw({700, 400}, {860, 300});
        choose(hand, Tool::number);
        hand.click({800, 450});
        choose(hand, Tool::text);
        hand.click({740, 520});
        hand.type(QStringLiteral("Se sale por la derecha"));
        hand.key(Qt::Key_Return);
        choosePointer(hand);
        hand.draw({kSelection.right(), kSelection.center().y()}, {800, 300});
    });
}

} // namespace

void takeMarkPictures(Photographer& photographer, Prefs& prefs)
{
    MarkScenes scenes(photographer, prefs);
    scenes.takeSizes();
    scenes.takeTexts();
    scenes.takeBadges();
    scenes.takePixelation();
    scenes.takeSelected();
    scenes.takeCutOff();
}

} // namespace brindlecam::pictures
