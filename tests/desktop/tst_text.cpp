#include "canvas/Hud.h"
#include "desktop/AnnotatingTest.h"
#include "desktop/support/Buttons.h"
#include "look/InterfaceFont.h"

#include <QFile>
#include <QPainter>
#include <QScopeGuard>
#include <QTemporaryDir>

namespace brindlecam::desktop {

/// The text of a selection, from a window to the clipboard.
class TestText final : public AnnotatingTest {
    Q_OBJECT

private:
    static constexpr const char* kDataFolder = "TESSDATA_PREFIX"; // of the engine
    static constexpr QRect kWindow{100, 40, 280, 240};            // holds the whole selection
    static constexpr QRect kFullWindow{40, 40, 1100, 600};
    static constexpr QRectF kFullSelected{50, 50, 1080, 580};

    /// What a window shows: these lines, or nothing but its ground.
    static QImage page(const QStringList& lines, const QColor& ground, const QColor& ink)
    {
        constexpr int kPitch = 30;
        QImage picture(kWindow.size(), QImage::Format_RGB32);
        picture.fill(ground);
        QPainter painter(&picture);
        painter.setFont(InterfaceFont::regular(17));
        painter.setPen(ink);
        int y = 70;
        for (const QString& line : lines) {
            painter.drawText(34, y, line);
            y += kPitch;
        }
        return picture;
    }

    /// So much that it takes seconds to read.
    static QImage fullPage()
    {
        constexpr int kPitch = 15;
        QImage picture(kFullWindow.size(), QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setFont(InterfaceFont::regular(11));
        painter.setPen(Qt::black);
        const QString line = QStringLiteral("Una línea larga entre muchas otras. ").repeated(6);
        for (int y = kPitch; y < picture.height(); y += kPitch)
            painter.drawText(6, y, line);
        return picture;
    }

    /// Puts a window with this picture there, in place of the one before.
    void show(const QImage& picture, const QRect& place = kWindow)
    {
        m_window.reset();
        m_window =
            desktop().open({.pixels = place, .kind = WindowKind::unmanaged, .picture = picture});
    }

    /// Opens a session over a window with this picture, with kSelected selected.
    [[nodiscard]] bool selectsOver(const QImage& picture)
    {
        useProgram();
        show(picture);
        return selects();
    }

    [[nodiscard]] QString copiedText() { return desktop().clipboard().text().value_or(QString()); }

    /// Waits for a message over the selection, exactly as it is painted over what was seen before.
    [[nodiscard]] bool says(const QString& message, const QImage& before,
                            const QRectF& selection = kSelected)
    {
        QImage expected = before;
        {
            QPainter painter(&expected);
            painter.setRenderHint(QPainter::Antialiasing);
            Hud::paint(painter, message, selection, canvas());
        }
        const QRect place = Hud::rect(message, selection, canvas()).toAlignedRect();
        return waitUntil([&] { return samePixels(seen(place), expected.copy(place)); });
    }

    std::unique_ptr<ClientWindow> m_window;

private Q_SLOTS:
    void spanishTextReachesTheClipboardAndTheFocusGoesBack_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::addColumn<QColor>("ink");
        QTest::addColumn<bool>("managed");
        QTest::newRow("dark on light") << QColor(Qt::white) << QColor(Qt::black) << true;
        QTest::newRow("light on dark, without a window manager")
            << QColor(0x1e, 0x1e, 0x2e) << QColor(0xe0, 0xe0, 0xe0) << false;
    }
    void spanishTextReachesTheClipboardAndTheFocusGoesBack()
    {
        QFETCH(QColor, ground);
        QFETCH(QColor, ink);
        QFETCH(const bool, managed);
        const QStringList lines{QStringLiteral("El niño comió piña"),
                                QStringLiteral("¿Cuántos años tenía?"),
                                QStringLiteral("La acción rápida")};
        useProgram({}, 1,
                   {.windowManager = managed ? WindowManager::openbox : WindowManager::none});
        const auto front = desktop().open({.pixels = QRect(600, 400, 300, 200)});
        QVERIFY(worksIn(*front));
        show(page(lines, ground, ink));
        QVERIFY(selects());
        QVERIFY(!front->hasFocus());
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(sessionIsOver());
        QVERIFY(waitUntil([&] { return copiedText() == lines.join(QLatin1Char('\n')); }));
        QVERIFY(toastComes());
        // Who had the focus before gets the next key.
        QVERIFY(getsFocus(*front));
        front->forget();
        input().tap(Qt::Key_A);
        QVERIFY(waitUntil([&] { return front->keys().size() == 1; }));
    }

    void withoutTextTheSessionGoesOn_data()
    {
        QTest::addColumn<bool>("typed");
        QTest::newRow("nothing at all") << false;
        QTest::newRow("only what the text tool wrote") << true;
    }
    void withoutTextTheSessionGoesOn()
    {
        QFETCH(bool, typed);
        QVERIFY(selectsOver(page({}, Qt::white, Qt::black)));
        const QImage empty = seen(kSelected);
        if (typed) {
            QVERIFY(choose(Tool::text));
            click({160, 100});
            input().type("hola");
            QVERIFY(choosePointer());
        }
        const QImage before = screen().grabAtRest();
        QCOMPARE(!samePixels(before.copy(pixels(kSelected)), empty), typed);
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(says(QStringLiteral("No se encontró texto en la selección"), before));
        QVERIFY(
            waitUntil([&] { return samePixels(seen(kSelected), before.copy(pixels(kSelected))); }));
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void withoutDataTheSessionSaysWhatIsMissing()
    {
        const QTemporaryDir empty;
        qputenv(kDataFolder, QFile::encodeName(empty.path())); // the program inherits it
        const auto restored = qScopeGuard([] { qunsetenv(kDataFolder); });
        QVERIFY(selectsOver(page({QStringLiteral("Hola")}, Qt::white, Qt::black)));
        const QImage before = screen().grabAtRest();
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(says(QStringLiteral("No se pudo leer el texto: faltan los datos de idioma "
                                    "(tesseract-ocr-spa o tesseract-ocr-eng)"),
                     before));
        QCOMPARE(overlays().size(), std::size_t(1));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
    }

    void escapeLeavesBeforeTheTextIsRead()
    {
        const auto reading = QStringLiteral("Leyendo texto…");
        useProgram();
        show(fullPage(), kFullWindow);
        const QRectF inside = kFullSelected.adjusted(60, 60, -60, -60); // without frame and handles
        const QImage undimmed = screen().grabAtRest().copy(pixels(inside));
        QVERIFY(openArea());
        drag(kFullSelected.topLeft(), kFullSelected.bottomRight());
        QVERIFY(waitUntil([&] { return samePixels(seen(inside), undimmed); }));
        const QImage before = screen().grabAtRest();
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(says(reading, before, kFullSelected));
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        // A session that waits for its reading ends with the text on the clipboard.
        QCOMPARE(copiedText(), QString());

        // Readings answer in their turn: whatever is left of the first one is through after this.
        show(page({}, Qt::white, Qt::black));
        QVERIFY(selects());
        const QImage empty = screen().grabAtRest();
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(says(QStringLiteral("No se encontró texto en la selección"), empty));
        QCOMPARE(copiedText(), QString());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());

        const auto line = QStringLiteral("La acción rápida");
        show(page({line}, Qt::white, Qt::black));
        QVERIFY(selects());
        QVERIFY(press(Buttons::kReadText));
        QVERIFY(waitUntil([&] { return !copiedText().isEmpty(); }));
        QCOMPARE(copiedText(), line);
    }
};

} // namespace brindlecam::desktop

int main(int argc, char* argv[])
{
    return brindlecam::desktop::runAnnotating<brindlecam::desktop::TestText>(argc, argv);
}

#include "tst_text.moc"
