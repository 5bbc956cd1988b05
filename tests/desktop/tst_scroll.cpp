#include "desktop/support/CaptureTest.h"

#include <csignal>

namespace brindlecam::desktop {

/// Pages that are scrolled under a frame and come out as one picture.
class TestScroll final : public CaptureTest {
    Q_OBJECT

private:
    static constexpr QRect kWindow{200, 100, 700, 500};
    static constexpr QRect kArea{220, 120, 420, 300};
    static constexpr int kNotch = 60; ///< what a notch of the wheel scrolls, in pixels

    QImage m_page;
    QRect m_area = kArea; ///< what is captured
    QRect m_place;        ///< of the page's window
    std::unique_ptr<ClientWindow> m_window;
    int m_top = 0; ///< how far the page is scrolled

    /// What the area shows of the page from there on.
    [[nodiscard]] QImage pageFrom(int top, int height) const
    {
        const QPoint inWindow = m_area.topLeft() - m_place.topLeft() + QPoint(0, top);
        return m_page.copy(QRect(inWindow, QSize(m_area.width(), height)));
    }

    void scrollTo(int top)
    {
        m_top = top;
        m_window->paint(m_page.copy(QRect(QPoint(0, top), m_place.size())));
    }

    /// A program that shows a tall page.
    void openPage(const QRect& place = kWindow, int height = 4000)
    {
        m_place = place;
        m_top = 0;
        m_page = noise({place.width(), height});
        m_window = desktop().open({.pixels = place,
                                   .kind = WindowKind::unmanaged,
                                   .picture = m_page.copy(QRect({0, 0}, place.size()))});
        QVERIFY(waitUntil(
            [&] { return samePixels(screen().grab(m_area), pageFrom(0, m_area.height())); }));
    }

    /// Turns the wheel over the page, as its program gets to know, and lets the page follow.
    [[nodiscard]] bool scroll(int notches)
    {
        input().moveTo(m_area.center());
        m_window->forget();
        for (int i = 0; i < notches; ++i) {
            input().press(Button::wheelDown);
            input().release(Button::wheelDown);
        }
        if (!waitUntil([&] { return m_window->clicks().size() >= std::size_t(notches); }))
            return false;
        scrollTo(m_top + notches * kNotch);
        return true;
    }

    /// Selects the area and presses the button under it.
    [[nodiscard]] bool begins(const QStringList& arguments = {})
    {
        startProgram(arguments);
        if (!openArea())
            return false;
        select(m_area);
        return press("Captura con desplazamiento") && sessionIsOver() &&
               placeOf("Listo", ControlKind::button).isValid();
    }

    [[nodiscard]] bool panelSays(const QString& status)
    {
        return waitUntil([&] { return controls().look(status).has_value(); });
    }
    [[nodiscard]] bool growsTo(int rows)
    {
        return panelSays(
            QStringLiteral("Capturando… %1 px de alto  ·  Enter = listo  ·  Esc = cancelar")
                .arg(rows));
    }
    [[nodiscard]] bool captureIsOver()
    {
        return waitUntil([&] { return !controls().look(QStringLiteral("Listo")); });
    }
    [[nodiscard]] bool isDelivered(const QImage& page)
    {
        return isPasted(page) && isOnlyCapture(page) && isOnlyInHistory(page);
    }

private Q_SLOTS:
    void init() { m_area = kArea; }

    void aScrolledPageBecomesOnePicture_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Return, whoever has the keyboard") << true;
        QTest::newRow("the button") << false;
    }
    void aScrolledPageBecomesOnePicture()
    {
        QFETCH(bool, byKey);
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        QVERIFY(begins());
        m_window->takeFocus();
        for (int rows = 420; rows <= 780; rows += 120) {
            QVERIFY(scroll(2));
            QVERIFY(growsTo(rows));
        }
        m_window->forget();
        if (byKey)
            input().tap(Qt::Key_Return);
        else
            QVERIFY(press("Listo"));
        QVERIFY(toastSays(QStringLiteral("Captura larga copiada y guardada (780 px de alto)")));
        QVERIFY(isDelivered(pageFrom(0, 780)));
        QVERIFY(captureIsOver());
        QVERIFY(m_window->keys().empty());
        QVERIFY(m_window->hasFocus());
    }

    void aPanelInsideTheRectangleIsNotInThePage_data()
    {
        QTest::addColumn<bool>("composited");
        QTest::newRow("without a compositor") << false;
        QTest::newRow("with one") << true;
    }
    void aPanelInsideTheRectangleIsNotInThePage()
    {
        QFETCH(bool, composited);
        useDesktop({.compositor = composited ? Compositor::picom : Compositor::none,
                    .accessibility = Accessibility::on});
        m_area = QRect(100, 0, 900, 800);
        openPage({90, 0, 920, 800});
        QVERIFY(begins());
        QVERIFY(m_area.contains(placeOf("Listo", ControlKind::button)));
        QVERIFY(scroll(3));
        QVERIFY(growsTo(980));
        QVERIFY(scroll(2));
        QVERIFY(growsTo(1100));
        input().tap(Qt::Key_Return);
        QVERIFY(isDelivered(pageFrom(0, 1100)));
    }

    void escapeLeavesNothing()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        const QImage clipboard = pasted();
        input().tap(Qt::Key_Escape);
        QVERIFY(captureIsOver());
        QVERIFY(captures().isEmpty());
        QVERIFY(samePixels(pasted(), clipboard)); // the selection's live copy
    }

    void scrollingTooFastIsToldAndMadeGoodByScrollingBack()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        scrollTo(2000);
        QVERIFY(panelSays(QStringLiteral("Muy rápido: regresa un poco y baja más despacio")));
        scrollTo(300);
        QVERIFY(growsTo(600));
        input().tap(Qt::Key_Return);
        QVERIFY(isDelivered(pageFrom(0, 600)));
    }

    void whileItRunsNoOtherCaptureBegins()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        QCOMPARE(program().command({QStringLiteral("area")}).exitCode, 4);
        pressHotKeyAtOnce(kAreaKey);
        QVERIFY(scroll(2));
        QVERIFY(growsTo(540));
        QCOMPARE(overlays().size(), std::size_t(1)); // the frame
        QVERIFY(!controls().look(QStringLiteral("Acciones")));
        input().tap(Qt::Key_Return);
        QVERIFY(isDelivered(pageFrom(0, 540)));
    }

    void whereReturnIsAnothersTheRestEndsIt()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        const auto rival = desktop().rival();
        QVERIFY(rival->takeHotKey(Qt::Key_Return, Qt::NoModifier));
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        input().tap(Qt::Key_Enter);
        QVERIFY(isDelivered(pageFrom(0, 420)));
    }

    void theWindowUnderItMayClose()
    {
        useDesktop({.accessibility = Accessibility::on, .patterned = true});
        openPage();
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        m_window.reset();
        QVERIFY(panelSays(QStringLiteral("Muy rápido: regresa un poco y baja más despacio")));
        input().tap(Qt::Key_Return);
        QVERIFY(isDelivered(pageFrom(0, 420)));
    }

    void quittingEndsItWithoutAPicture()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        QCOMPARE(program().command({QStringLiteral("quit")}).exitCode, 0);
        QVERIFY(waitUntil([&] { return !program().isRunning(); }));
        QVERIFY(captures().isEmpty());
        QVERIFY(history().isEmpty());
    }

    void quittingWaitsForAFinishedPage()
    {
        constexpr int kMostWait = 5000; // ms
        useDesktop({.accessibility = Accessibility::on});
        m_area = QRect(50, 30, 1100, 600);
        openPage({40, 20, 1150, 620}, 9000);
        QVERIFY(begins());
        int rows = 600;
        while (rows < 7800) {
            QVERIFY(scroll(8));
            rows += 8 * kNotch;
            QVERIFY(growsTo(rows));
        }
        input().tap(Qt::Key_Return);
        QVERIFY(captureIsOver());
        QCOMPARE(::kill(static_cast<pid_t>(program().pid()), SIGTERM), 0);
        QVERIFY(filesIn(program().folders().captures()).isEmpty()); // it is still being encoded
        QVERIFY(waitUntil([&] { return !program().isRunning(); }, kMostWait));
        QCOMPARE(program().exitCode(), 0);
        const QImage page = pageFrom(0, rows);
        QVERIFY(samePixels(onlyPictureIn(program().folders().captures()), page));
        QVERIFY(samePixels(onlyPictureIn(program().folders().history()), page));
    }

    void onADenseScreenAPointIsTwoPixels()
    {
        useDesktop({.accessibility = Accessibility::on});
        openPage();
        program().setScales(QStringLiteral("2"));
        QVERIFY(begins());
        QVERIFY(scroll(2));
        QVERIFY(growsTo(420));
        input().tap(Qt::Key_Return);
        QVERIFY(isDelivered(pageFrom(0, 420)));
        QCOMPARE(pasted().dotsPerMeterX(), 5669);
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestScroll)

#include "tst_scroll.moc"
