// Covers CanvasActions, CanvasModel.
#include "CanvasFixture.h"
#include "canvas/BarView.h"
#include "pictures/Dimming.h"
#include "support/TestCase.h"

#include <QBackingStore>
#include <QMouseEvent>

namespace brindlecam {

namespace {

/// Counts the paint events of what it watches.
class PaintCounter final : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

/// A canvas over a picture whose every pixel is known.
class TestCanvasView final : public test::TestCase {
    Q_OBJECT

private:
    using Fixture = test::CanvasFixture;

private Q_SLOTS:
    void focusPaintsNothing()
    {
        Fixture f;
        f.canvas->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.canvas.get()));
        QCoreApplication::sendPostedEvents();
        PaintCounter painted;
        f.canvas->installEventFilter(&painted);
        for (const auto kind : {QEvent::FocusIn, QEvent::FocusOut}) {
            QFocusEvent event(kind);
            QCoreApplication::sendEvent(f.canvas.get(), &event);
        }
        QCoreApplication::processEvents();
        QCOMPARE(painted.count, 0);
        f.canvas->update();
        QTRY_COMPARE(painted.count, 1);
    }

    void barsThatCameWhileAFrameWasShownArePaintedAfterIt()
    {
        Fixture f;
        f.canvas->setAttribute(Qt::WA_UpdatesDisabled);
        f.canvas->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.canvas.get()));
        f.drag({50, 40}, {150, 110});
        const auto bars = f.canvas->findChildren<BarView*>();
        QVERIFY(!bars.empty() && bars.front()->isVisible());
        QWidgetList held = f.canvas->findChildren<QWidget*>();
        held.push_back(f.canvas.get());
        for (QWidget* widget : held)
            widget->setAttribute(Qt::WA_UpdatesDisabled, false);
        QCoreApplication::processEvents();
        PaintCounter painted;
        bars.front()->installEventFilter(&painted);
        f.canvas->paintAfterFirstFrame();
        QTRY_COMPARE(painted.count, 1);
    }

    void dragAndReturnYieldTheSelectedPixels()
    {
        Fixture f;
        f.drag({50, 40}, {150, 110});
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        QCOMPARE(f.outcomes.size(), 1U);
        const auto& copy = std::get<outcome::Copy>(f.outcomes.front());
        QCOMPARE(copy.picture.image(), f.image.copy(50, 40, 100, 70));
        QCOMPARE(copy.picture.pointSize(), QSizeF(100, 70));
    }

    void threeByThreeSelectionIsAPictureOfNinePixels()
    {
        Fixture f;
        f.drag({50, 40}, {53, 43});
        QTest::keyClick(f.canvas.get(), Qt::Key_Enter, Qt::KeypadModifier);
        const auto& copy = std::get<outcome::Copy>(f.outcomes.at(0));
        QCOMPARE(copy.picture.image(), f.image.copy(50, 40, 3, 3));
    }

    void keysEndTheSessionAsTheyPromise_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
        QTest::addColumn<int>("outcome");
        const Qt::KeyboardModifiers none = Qt::NoModifier;
        const Qt::KeyboardModifiers control = Qt::ControlModifier;
        QTest::newRow("Return") << int(Qt::Key_Return) << none << 0;
        QTest::newRow("keypad Enter")
            << int(Qt::Key_Enter) << Qt::KeyboardModifiers(Qt::KeypadModifier) << 0;
        QTest::newRow("standard copy") << int(Qt::Key_C) << control << 0;
        QTest::newRow("copy with Shift") << int(Qt::Key_C) << (control | Qt::ShiftModifier) << 0;
        QTest::newRow("standard save") << int(Qt::Key_S) << control << 1;
        QTest::newRow("Escape") << int(Qt::Key_Escape) << none << 6;
    }
    void keysEndTheSessionAsTheyPromise()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Fixture f;
        f.drag({50, 40}, {150, 110});
        QTest::keyClick(f.canvas.get(), static_cast<Qt::Key>(key), modifiers);
        QCOMPARE(f.outcomes.size(), 1U);
        QTEST(int(f.outcomes.front().index()), "outcome");
    }

    void keysWithoutASelectionOnlyCancel()
    {
        Fixture f;
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        QTest::keyClick(f.canvas.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(f.outcomes.empty());
        QTest::keyClick(f.canvas.get(), Qt::Key_Escape);
        QCOMPARE(f.outcomes.size(), 1U);
    }

    void repeatsOfAHeldKeyDoNothing()
    {
        Fixture f;
        f.drag({50, 40}, {150, 110});
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
            QKeyEvent repeat(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(f.canvas.get(), &repeat);
        }
        QVERIFY(f.outcomes.empty());
    }

    void everyFinishedDragIsCopiedWhileAutoCopyIsOn()
    {
        Fixture f;
        f.drag({50, 40}, {150, 110});
        QCOMPARE(f.autoCopied.size(), 1U);
        QCOMPARE(f.autoCopied.back().image(), f.image.copy(50, 40, 100, 70));
        f.drag({100, 70}, {120, 90});
        QCOMPARE(f.autoCopied.size(), 2U);
        QCOMPARE(f.autoCopied.back().image(), f.image.copy(70, 60, 100, 70));
    }

    void nothingIsCopiedByItselfWhenAutoCopyIsOff()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("autoCopy"), false);
        f.drag({50, 40}, {150, 110});
        QVERIFY(f.autoCopied.empty());
    }

    void aClickThatSelectsNothingCopiesNothing()
    {
        Fixture f;
        f.drag({50, 40}, {51, 41});
        QVERIFY(f.autoCopied.empty());
    }

    void returnAfterAnAutomaticCopyDeliversTheSamePicture()
    {
        Fixture f;
        f.drag({50, 40}, {150, 110});
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        QCOMPARE(std::get<outcome::Copy>(f.outcomes.at(0)).picture.image().cacheKey(),
                 f.autoCopied.at(0).image().cacheKey());
    }

    void dragToTheLastPixelTakesItIn()
    {
        Fixture f;
        f.drag({200, 100}, {399, 299});
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        QCOMPARE(std::get<outcome::Copy>(f.outcomes.at(0)).picture.image(),
                 f.image.copy(200, 100, 200, 200));
    }

    void dragToTheLastPixelAtAFractionalScaleTakesItInThoughQtRounds()
    {
        const qreal scale = 1.75;
        Fixture f(QSizeF(test::CanvasFixture::kPixels) / scale);
        const auto send = [&](QEvent::Type type, QPointF exact, Qt::MouseButtons buttons) {
            QMouseEvent event(type, exact.toPoint(), exact, exact, Qt::LeftButton, buttons, {});
            QCoreApplication::sendEvent(f.canvas.get(), &event);
        };
        send(QEvent::MouseButtonPress, QPointF(140, 70) / scale, Qt::LeftButton);
        send(QEvent::MouseMove, QPointF(399, 298) / scale, Qt::LeftButton);
        QCOMPARE(f.canvas->selection().rect().bottom(), 298 / scale);
        send(QEvent::MouseMove, QPointF(399, 299) / scale, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, QPointF(399, 299) / scale, Qt::NoButton);
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        QCOMPARE(std::get<outcome::Copy>(f.outcomes.at(0)).picture.image(),
                 f.image.copy(140, 70, 260, 230));
    }

    void selectionAtScaleTwoYieldsAllItsPixels()
    {
        Fixture f(QSizeF(200, 150));
        f.drag({10, 20}, {60, 50});
        QTest::keyClick(f.canvas.get(), Qt::Key_Return);
        const auto& copy = std::get<outcome::Copy>(f.outcomes.at(0));
        QCOMPARE(copy.picture.image(), f.image.copy(20, 40, 100, 60));
        QCOMPARE(copy.picture.pointSize(), QSizeF(50, 30));
    }

    void beginningASelectionIsReportedAtEveryNewOne()
    {
        Fixture f;
        int begun = 0;
        f.canvas->onBeginSelection = [&begun] { ++begun; };
        f.drag({50, 40}, {150, 110});
        QCOMPARE(begun, 1);
        f.drag({100, 70}, {110, 80}); // moves
        QCOMPARE(begun, 1);
        f.drag({300, 200}, {350, 250});
        QCOMPARE(begun, 2);
    }

    void onlyTheLeftButtonSelects()
    {
        Fixture f;
        QTest::mousePress(f.canvas.get(), Qt::RightButton, {}, {50, 40});
        QTest::mouseMove(f.canvas.get(), {150, 110});
        QTest::mouseRelease(f.canvas.get(), Qt::RightButton, {}, {150, 110});
        QVERIFY(f.canvas->selection().isEmpty());
    }

    void paintsTheSelectionBrightAndTheRestDimmed()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("showLoupe"), false);
        const QImage dimmed = Dimming::dimmedCopy(f.image);
        f.drag({50, 100}, {150, 170});
        const QImage shown = f.canvas->grab().toImage();
        QCOMPARE(shown.pixel(100, 120), f.image.pixel(100, 120));
        QCOMPARE(shown.pixel(60, 120), f.image.pixel(60, 120));
        QCOMPARE(shown.pixel(300, 250), dimmed.pixel(300, 250));
        QCOMPARE(shown.pixel(20, 20), dimmed.pixel(20, 20));
    }

    // What partial repaints leave on the screen must equal one repaint of everything.
    void partialRepaintsLeaveNothingStale()
    {
        Fixture f;
        CanvasView& canvas = *f.canvas;
        canvas.setWindowRects({QRectF(200, 20, 150, 200)});
        canvas.show();
        QVERIFY(QTest::qWaitForWindowExposed(&canvas));
        const auto compare = [&canvas] {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
            const auto* shown = dynamic_cast<QImage*>(canvas.backingStore()->paintDevice());
            QVERIFY(shown);
            QCOMPARE(shown->convertToFormat(QImage::Format_RGB32),
                     canvas.grab().toImage().convertToFormat(QImage::Format_RGB32));
        };
        for (const QPoint to : {QPoint(250, 100), QPoint(60, 250), QPoint(350, 290)}) {
            QTest::mouseMove(&canvas, to);
            compare();
        }
        QTest::mousePress(&canvas, Qt::LeftButton, {}, {300, 200});
        for (const QPoint to :
             {QPoint(280, 190), QPoint(100, 50), QPoint(120, 90), QPoint(390, 20)}) {
            QTest::mouseMove(&canvas, to);
            compare();
        }
        QTest::mouseRelease(&canvas, Qt::LeftButton, {}, {390, 20});
        compare();
    }
};

BRINDLECAM_TEST(TestCanvasView);

} // namespace brindlecam

#include "tst_canvasview.moc"
