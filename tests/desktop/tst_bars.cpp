#include "desktop/AnnotatingTest.h"
#include "look/Pill.h"

#include <algorithm>

namespace brindlecam::desktop {

/// The bars under the pointer: popups, sliders, and presses that are not the canvas's.
class TestBars final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr QPointF kFrom{150, 90};
    static constexpr QPointF kTo{300, 200};

    /// A line of this width.
    [[nodiscard]] Annotation line(qreal width) const
    {
        Annotation made = mark(Tool::line, kFrom, kTo);
        made.setLineWidth(width);
        return made;
    }

    /// Waits until a control with this name is in this place, in points of the canvas.
    [[nodiscard]] bool standsAt(const char* name, const QRectF& place)
    {
        if (placeOf(name) == pixels(place))
            return true;
        qWarning() << name << "is at" << placeOf(name);
        return false;
    }

    /// What has changed on the screen, but for one control: a tight rectangle.
    [[nodiscard]] QRect changedBeside(const QRect& control, const QImage& before)
    {
        const QImage now = screen().grab();
        QRect changed;
        for (int y = 0; y < now.height(); ++y) {
            for (int x = 0; x < now.width(); ++x) {
                if (now.pixel(x, y) != before.pixel(x, y) && !control.contains(x, y))
                    changed |= QRect(x, y, 1, 1);
            }
        }
        return changed;
    }

    /// Rests the pointer on a control and waits until just its tool tip has come, a dark pill as
    /// large as its text. Empty when it never does, or comes with a window. `before` is the screen
    /// without any.
    [[nodiscard]] QRect tipOf(const QString& name, const QImage& before, qreal scale = 1)
    {
        const auto control = controls().find(name);
        if (!control)
            return {};
        const QSizeF size = Pill::toolTip(control->name).size() * scale;
        const auto isLike = [](int seen, qreal wanted) { return qAbs(seen - wanted) <= 4; };
        const std::size_t windowsBefore = windows().all().size();
        bool isAWindow = false;
        QRect tip;
        const bool isShown = restUntil(control->pixels.center(), [&] {
            isAWindow = windows().all().size() != windowsBefore;
            tip = changedBeside(control->pixels, before);
            return isAWindow ||
                   (isLike(tip.width(), size.width()) && isLike(tip.height(), size.height()));
        });
        const QColor ground = screen().pixel({tip.left() + 4, tip.center().y()});
        if (isShown && !isAWindow && ground.lightness() < 60)
            return tip;
        qWarning() << name << "has a tip at" << tip << ground << "instead of" << size
                   << (isAWindow ? "and a window" : "");
        return {};
    }

    /// The screen at rest with this popup, the pointer aside; `without` is what it was before.
    [[nodiscard]] QImage seenWith(const char* popup, const QImage& without)
    {
        moveTo({240, 240});
        const QRect place = placeOf(popup);
        QImage seen = without;
        const bool isThere = waitUntil([&] {
            seen = screen().grabAtRest();
            return !samePixels(seen.copy(place), without.copy(place));
        });
        if (!isThere)
            qWarning() << popup << "is not seen";
        return seen;
    }

    /// Whether every button and slider but this one looks as before.
    [[nodiscard]] bool othersAreSeen(const QString& name, const QImage& before)
    {
        const auto control = controls().look(name);
        const QImage now = screen().grab();
        const auto all = controls().shown();
        return control && std::ranges::all_of(all, [&](const Control& other) {
                   const bool same = other.kind == ControlKind::other ||
                                     other.name == control->name ||
                                     samePixels(now.copy(other.pixels), before.copy(other.pixels));
                   if (!same)
                       qWarning() << other.name << "is not as before";
                   return same;
               });
    }

private Q_SLOTS:
    void barsStandAroundTheSelectionAndPopupsBesideTheirButtons_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("top"); // of the tools bar
        QTest::newRow("at 1") << 1.0 << 60;
        QTest::newRow("at 1.5") << 1.5 << 60;
        QTest::newRow("at 2, where the screen is too low") << 2.0 << 6;
    }
    void barsStandAroundTheSelectionAndPopupsBesideTheirButtons()
    {
        QFETCH(qreal, scale);
        QFETCH(int, top);
        QVERIFY(annotates({}, scale));
        QVERIFY(standsAt("Herramientas", QRect(368, top, 38, 390)));
        QVERIFY(standsAt("Acciones", QRect(130, 268, 230, 38)));
        QVERIFY(choose(Tool::line));
        QVERIFY(standsAt("Tamaños", QRect(412, top + 64, 198, 38)));
        QVERIFY(openPalette());
        QVERIFY(standsAt("Colores", QRect(412, top + 288, 198, 70)));
    }

    void sizePopupSetsTheWidth_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<int>("from"); // from its left end
        QTest::addColumn<int>("to");
        QTest::addColumn<qreal>("width");
        const QByteArray slider("Grosor de la línea");
        QTest::newRow("minus") << QByteArray("Más fino / pequeño") << 15 << 15 << 2.0;
        QTest::newRow("plus") << QByteArray("Más grueso / grande") << 15 << 15 << 4.0;
        QTest::newRow("slider pressed at its right end") << slider << 122 << 122 << 20.0;
        QTest::newRow("slider dragged past its left end") << slider << 86 << -94 << 1.0;
    }
    void sizePopupSetsTheWidth()
    {
        QFETCH(QByteArray, control);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(qreal, width);
        QVERIFY(annotates());
        QVERIFY(choose(Tool::line));
        const QRect place = placeOf(control.constData());
        QVERIFY(!place.isEmpty());
        const QPoint left(place.left(), place.center().y());
        input().drag(left + QPoint(from, 0), left + QPoint(to, 0));
        drag(kFrom, kTo);
        QVERIFY(returnTakes({line(width)}));
    }

    void paletteSetsTheOpacityOfTheMarker()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::marker));
        QVERIFY(openPalette());
        QVERIFY(press("Más opacidad del marcador"));
        moveTo(kFrom);
        input().press(Button::left);
        QVERIFY(strokeReaches(kTo));
        input().release(Button::left);
        Annotation stroke(Tool::marker, Config::palette.front(), kFrom);
        stroke.append(kTo);
        stroke.setLineWidth(sizes(Tool::marker)->standard);
        stroke.setOpacity(0.45);
        QVERIFY(returnTakes({stroke}));
    }

    void everyColorIsDrawnWith()
    {
        QVERIFY(annotates());
        Marks marks;
        for (std::size_t i = 0; i < Config::palette.size(); ++i) {
            QVERIFY(pick(i));
            QVERIFY(choose(Tool::number));
            const QPointF at(150 + 30 * static_cast<qreal>(i), 160);
            click(at);
            marks.push_back(badge(at, 1, Config::palette.at(i)));
            QVERIFY(isPastedWith(marks));
            QVERIFY(choosePointer());
        }
        QVERIFY(returnTakes(marks));
    }

    void secondPressOfAToolGoesBackToThePointer()
    {
        QVERIFY(annotates());
        QVERIFY(choose(Tool::rect));
        QVERIFY(pressTool(Tool::rect));
        QVERIFY(isChosen(std::nullopt));
        drag(kFrom, kFrom + QPointF(20, 10)); // moves the selection
        QVERIFY(returnTakes({}, kSelected.translated(20, 10)));
    }

    void pressBesideTheButtonsIsSwallowed()
    {
        QVERIFY(annotates());
        // The padding of both bars; dragged on the canvas these would begin another selection.
        const QRect tools = placeOf("Herramientas");
        const QRect actions = placeOf("Acciones");
        QVERIFY(!tools.isEmpty() && !actions.isEmpty());
        input().drag(tools.topLeft() + QPoint(2, 20), {600, 350});
        input().drag(actions.topLeft() + QPoint(20, 2), {600, 350});
        QVERIFY(returnTakes({}));
    }

    void pressOnTheCanvasClosesThePopup()
    {
        QVERIFY(annotates());
        const QImage closed = screen().grabAtRest();
        QVERIFY(openPalette());
        const QRect palette = placeOf("Colores");
        QVERIFY(!palette.isEmpty());
        click({200, 160});
        input().moveTo({1200, 700});
        QVERIFY(
            waitUntil([&] { return samePixels(screen().grab(palette), closed.copy(palette)); }));
        QVERIFY(returnTakes({}));
    }

    void toolTipsStandBesideTheBars_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<bool>("palette");
        QTest::addColumn<QStringList>("names");
        const QStringList inBars{QStringLiteral("Línea"),  QStringLiteral("Números de paso ① ② ③"),
                                 QStringLiteral("Color"),  QStringLiteral("Rehacer"),
                                 QStringLiteral("Copiar"), QStringLiteral("Cerrar")};
        const QStringList withPopup =
            inBars + QStringList{QStringLiteral("Opacidad del marcador"),
                                 QStringLiteral("Más opacidad del marcador")};
        QTest::newRow("at 1") << 1.0 << false << inBars;
        QTest::newRow("at 1, with the palette") << 1.0 << true << withPopup;
        QTest::newRow("at 2") << 2.0 << false << inBars;
        QTest::newRow("at 2, with the palette") << 2.0 << true << withPopup;
    }
    void toolTipsStandBesideTheBars()
    {
        QFETCH(qreal, scale);
        QFETCH(bool, palette);
        QFETCH(QStringList, names);
        QVERIFY(annotates({}, scale));
        moveTo({240, 240});
        QImage before = screen().grabAtRest();
        if (palette) {
            QVERIFY(openPalette());
            before = seenWith("Colores", before);
        }
        const std::size_t windowsBefore = windows().all().size();
        for (const QString& name : names) {
            QVERIFY2(!tipOf(name, before, scale).isEmpty(), qPrintable(name));
            QVERIFY2(othersAreSeen(name, before), qPrintable(name));
            QCOMPARE(windows().all().size(), windowsBefore);
            QCOMPARE(windows().shown(program().pid()).size(), std::size_t(1));
        }
        moveTo({240, 240});
        QVERIFY(waitUntil([&] { return samePixels(screen().grab(), before); }));
        QVERIFY(returnTakes({}));
    }

    void toolTipGoesWithWheelAndKeys()
    {
        QVERIFY(annotates());
        moveTo({240, 240});
        const QImage before = screen().grabAtRest();
        const QString name = QStringLiteral("Guardar");
        const auto isGone = [&] {
            return waitUntil([&] { return changedBeside(placeOf("Guardar"), before).isEmpty(); });
        };
        QVERIFY(!tipOf(name, before).isEmpty());
        input().tap(Qt::Key_Shift);
        QVERIFY(isGone());
        moveTo({240, 240});
        QVERIFY(!tipOf(name, before).isEmpty());
        input().click(placeOf("Guardar").center(), Button::wheelUp);
        QVERIFY(isGone());
        QVERIFY(returnTakes({}));
    }

    void toolTipOverTheSelectionIsNotInThePicture()
    {
        QVERIFY(annotates());
        moveTo({240, 240});
        const QImage bare = screen().grabAtRest();
        QVERIFY(choose(Tool::line)); // its sizes are on the other side of the bar
        const QRect tip = tipOf(QStringLiteral("Línea"), seenWith("Tamaños", bare));
        QVERIFY(!tip.isEmpty());
        QVERIFY(pixels(kSelected).contains(tip.center()));
        QVERIFY(returnTakes({}));
    }

    void selectionOfTheWholeScreenHasItsBarsInside()
    {
        useProgram();
        QVERIFY(openArea());
        const QRectF whole(QPointF(), canvas());
        input().drag({0, 0}, {1279, 799});
        QVERIFY(pressTool(Tool::rect));
        const QPointF bar = placeOf("Herramientas").topLeft();
        const QPointF from = bar - QPointF(60, 0);
        const QPointF to = bar + QPointF(-10, 90);
        drag(from, to);
        QVERIFY(returnTakes({mark(Tool::rect, from, to)}, whole));
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestBars>(argc, argv);
}

#include "tst_bars.moc"
