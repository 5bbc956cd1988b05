#include "CanvasFixture.h"
#include "ToolbarFixture.h"
#include "canvas/BarTip.h"
#include "support/TestCase.h"
#include "support/ToolTips.h"

#include <QToolTip>
#include <QWheelEvent>

namespace brindlecam {

using test::CanvasFixture;
using test::qtShowsATip;
using test::restOn;
using test::ToolbarFixture;

namespace {

/// The bars with a tip that may be shown.
struct TipFixture : ToolbarFixture {
    [[nodiscard]] BarTip& tip() const { return *canvas.findChild<BarTip*>(); }
    [[nodiscard]] bool shows() const { return tip().isVisible(); }

    /// All controls that are shown.
    [[nodiscard]] QList<QWidget*> controls() const
    {
        QList<QWidget*> all;
        for (BarButton* each : canvas.findChildren<BarButton*>())
            all << each;
        for (SliderTrack* each : canvas.findChildren<SliderTrack*>())
            all << each;
        all.removeIf([](const QWidget* each) { return !each->isVisible(); });
        return all;
    }
    [[nodiscard]] QList<BarSurface*> surfaces() const { return canvas.findChildren<BarSurface*>(); }
};

void send(QWidget& widget, QEvent::Type type)
{
    QEvent event(type);
    QCoreApplication::sendEvent(&widget, &event);
}

// QTest's own would be down until its release.
void press(QWidget& widget)
{
    const QPointF at(5, 5);
    QMouseEvent event(QEvent::MouseButtonPress, at, widget.mapToGlobal(at), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&widget, &event);
}

void turnWheel(QWidget& widget)
{
    QWheelEvent event({}, {}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class TestBarTip final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyControlShowsItsTipBesideAllBars_data()
    {
        QTest::addColumn<QString>("popup");
        QTest::newRow("no popup") << QString();
        QTest::newRow("sizes") << name(Tool::arrow);
        QTest::newRow("palette") << QStringLiteral("palette");
    }
    void everyControlShowsItsTipBesideAllBars()
    {
        QFETCH(QString, popup);
        TipFixture f;
        QVERIFY(f.activate());
        if (popup == name(Tool::arrow))
            f.bars.showSizePopup(Tool::arrow);
        else if (!popup.isEmpty())
            f.bars.togglePalette();
        int shown = 0;
        for (QWidget* control : f.controls()) {
            const bool has = !control->toolTip().isEmpty();
            QCOMPARE(restOn(*control), has);
            QVERIFY(!qtShowsATip());
            QVERIFY2(f.shows() == has, qPrintable(control->accessibleName()));
            if (has)
                ++shown;
            for (const BarSurface* bar : f.surfaces())
                QVERIFY(!f.shows() || bar->isHidden() ||
                        !bar->geometry().intersects(f.tip().geometry()));
            send(*control, QEvent::Leave);
            QVERIFY(!f.shows());
        }
        QCOMPARE(shown, popup.isEmpty() ? 19 : 22);
    }

    void qtItselfWouldOpenAWindow()
    {
        QWidget other;
        other.setToolTip(QStringLiteral("another"));
        other.show();
        QVERIFY(restOn(other));
        QVERIFY(qtShowsATip());
        QToolTip::hideText();
        QTRY_VERIFY(!qtShowsATip());
    }

    void isADarkPillAsLongAsItsText()
    {
        TipFixture f;
        QVERIFY(f.activate());
        BarButton& line = f.toolButton(Tool::line);
        QVERIFY(restOn(line));
        const QRect place = f.tip().geometry();
        QCOMPARE(place.center().y(), line.mapTo(&f.canvas, line.rect().center()).y());
        const QImage seen = f.canvas.grab(place).toImage();
        const QColor ground = seen.pixelColor(5, seen.height() / 2);
        QVERIFY2(ground.lightness() < 60, qPrintable(ground.name()));
        const auto isText = [&](int x) {
            for (int y = 0; y < seen.height(); ++y) {
                if (seen.pixelColor(x, y).lightness() > 180)
                    return true;
            }
            return false;
        };
        QVERIFY(!isText(5));
        int first = 6;
        while (first < seen.width() && !isText(first))
            ++first;
        int last = seen.width() - 6;
        while (last > 0 && !isText(last))
            --last;
        QVERIFY2(first >= 9 && first <= 13, qPrintable(QString::number(first)));
        QVERIFY2(seen.width() - last >= 9 && seen.width() - last <= 13,
                 qPrintable(QString::number(last)));
        send(line, QEvent::Leave);
        QVERIFY(restOn(f.toolButton(Tool::arrow)));
        QVERIFY(restOn(*f.actions().at(2)));
        QVERIFY(f.tip().width() > place.width());
    }

    void goesWithWhatTheUserDoesNext_data()
    {
        using Act = std::function<void(TipFixture&)>;
        QTest::addColumn<Act>("act");
        QTest::newRow("a press on its button")
            << Act([](TipFixture& f) { press(f.colorButton()); });
        QTest::newRow("a press elsewhere") << Act([](TipFixture& f) { press(f.canvas); });
        QTest::newRow("a key") << Act(
            [](TipFixture& f) { QTest::keyPress(&f.canvas, Qt::Key_Shift); });
        QTest::newRow("the wheel") << Act([](TipFixture& f) { turnWheel(f.colorButton()); });
        QTest::newRow("the wheel elsewhere") << Act([](TipFixture& f) { turnWheel(f.canvas); });
        QTest::newRow("the focus") << Act([](TipFixture& f) { f.colorButton().setFocus(); });
        QTest::newRow("the pointer leaves")
            << Act([](TipFixture& f) { send(f.colorButton(), QEvent::Leave); });
        QTest::newRow("the bars go") << Act([](TipFixture& f) { f.bars.hide(); });
        QTest::newRow("the window goes") << Act([](TipFixture& f) { f.canvas.hide(); });
    }
    void goesWithWhatTheUserDoesNext()
    {
        QFETCH(std::function<void(TipFixture&)>, act);
        TipFixture f;
        QVERIFY(f.activate());
        QVERIFY(restOn(f.colorButton()));
        QVERIFY(f.shows());
        act(f);
        QVERIFY(f.tip().isHidden());
        // And comes again.
        f.canvas.show();
        f.bars.show();
        QVERIFY(f.tip().isHidden());
        QVERIFY(restOn(f.colorButton()));
        QVERIFY(f.shows());
    }

    void goesByItselfInTheEnd()
    {
        QWidget canvas;
        canvas.resize(400, 300);
        QWidget control(&canvas);
        control.setToolTip(QStringLiteral("a tip"));
        const auto placing = [](const QWidget&, QSize size) { return QRect({50, 50}, size); };
        BarTip tip(canvas, placing, std::chrono::milliseconds(1));
        BarTip lasting(canvas, placing);
        QWidget other(&canvas);
        other.setToolTip(QStringLiteral("another tip"));
        tip.serve(control);
        lasting.serve(other);
        canvas.show();
        for (int round = 0; round < 2; ++round) {
            QVERIFY(restOn(control));
            QVERIFY(tip.isVisible());
            QTRY_VERIFY(tip.isHidden());
        }
        QVERIFY(restOn(other));
        QVERIFY(!QTest::qWaitFor([&] { return lasting.isHidden(); }, 50));
    }

    void aTipOfAPopupGoesWithIt()
    {
        TipFixture f;
        QVERIFY(f.activate());
        f.bars.togglePalette();
        QVERIFY(restOn(f.palette().plus()));
        QVERIFY(f.shows());
        f.bars.hidePopups();
        QVERIFY(f.tip().isHidden());
    }

    void staysWhileThePointerStaysOnItsControl()
    {
        TipFixture f;
        QVERIFY(f.activate());
        QVERIFY(restOn(f.colorButton()));
        const QRect place = f.tip().geometry();
        QTest::mouseMove(&f.colorButton(), {3, 3});
        QVERIFY(restOn(f.colorButton()));
        send(f.toolButton(Tool::pen), QEvent::Leave); // of another one
        QVERIFY(f.shows());
        QCOMPARE(f.tip().geometry(), place);
    }

    void nextControlTakesItOver()
    {
        TipFixture f;
        QVERIFY(f.activate());
        QVERIFY(restOn(f.toolButton(Tool::line)));
        const QRect place = f.tip().geometry();
        QVERIFY(restOn(f.toolButton(Tool::number)));
        QVERIFY(f.shows());
        QVERIFY(f.tip().y() > place.y());
        QVERIFY(!restOn(*f.palette().swatches().front())); // the popup is closed, too
        QVERIFY(f.shows());
    }

    void whatEndsItIsNotTakenAway()
    {
        TipFixture f;
        QVERIFY(f.activate());
        QVERIFY(restOn(f.toolButton(Tool::pen)));
        QTest::keyClick(&f.canvas, Qt::Key_A);
        QCOMPARE(f.canvas.keys, std::vector<int>{Qt::Key_A});
        QVERIFY(restOn(f.toolButton(Tool::pen)));
        QTest::mouseClick(&f.toolButton(Tool::pen), Qt::LeftButton);
        QCOMPARE(f.taken(), QStringList(name(Tool::pen)));
    }

    void buttonsThatCannotBePressedHaveOneToo()
    {
        TipFixture f;
        f.bars.setAvailable(Toolbar::Action::gif, Toolbar::Availability::disabled);
        QVERIFY(f.activate());
        QVERIFY(restOn(*f.actions().at(3)));
        QVERIFY(f.shows());
    }

    void theMouseGoesThroughAndItLiesAboveAll()
    {
        TipFixture f;
        QVERIFY(f.activate());
        QVERIFY(restOn(f.toolButton(Tool::line)));
        QVERIFY(!f.canvas.childAt(f.tip().geometry().center()));
        QCOMPARE(f.canvas.children().last(), &f.tip());
        QVERIFY(!f.tip().isWindow());
        QVERIFY(!f.tip().testAttribute(Qt::WA_NativeWindow));
    }

    void nothingIsShownWithoutRoom()
    {
        TipFixture f;
        f.bars.layOut({5, 5, 20, 20}, {60, 50});
        QVERIFY(f.activate());
        QVERIFY(restOn(f.toolButton(Tool::line))); // or Qt would open its window
        QVERIFY(!f.shows());
        QVERIFY(!qtShowsATip());
    }

    // When it comes is Qt's business: after a rest, and soon after the last one.
    void comesAfterTheUsualDelay()
    {
        TipFixture f;
        QVERIFY(f.activate());
        QTest::mouseMove(&f.toolButton(Tool::line));
        QVERIFY(!f.shows());
        QTRY_VERIFY(f.shows());
        const QRect place = f.tip().geometry();
        QTest::mouseMove(&f.toolButton(Tool::number));
        QTRY_VERIFY(f.shows() && f.tip().y() > place.y());
        QTest::mouseMove(&f.canvas, {10, 10});
        QTRY_VERIFY(!f.shows());
        QVERIFY(!qtShowsATip());
    }

    void isInNoPicture()
    {
        CanvasFixture f;
        const QRect selected(1, 1, 399, 299); // to the edges that are beyond the last pixel
        f.drag({1, 1}, {399, 299});
        f.canvas->show();
        QVERIFY(restOn(*f.button(tooltip(Tool::line))));
        const auto* tip = f.canvas->findChild<BarTip*>();
        QVERIFY(tip->isVisible());
        QVERIFY(selected.contains(tip->geometry()));
        const auto picture = f.canvas->actions().render();
        QVERIFY(picture);
        QVERIFY(tip->isVisible());
        QCOMPARE(picture->image(), f.image.copy(selected));
    }
};

BRINDLECAM_TEST(TestBarTip);

} // namespace brindlecam

#include "tst_bartip.moc"
