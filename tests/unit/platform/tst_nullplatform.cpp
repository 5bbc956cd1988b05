#include "platform/Platform.h"
#include "platform/null/NullPlatform.h"
#include "support/TestCase.h"

#include <optional>

namespace brindlecam {

/// What the program has where no port answers: on a system that is not spoken yet, and in tests.
class TestNullPlatform final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyPortIsThere()
    {
        const Platform null = makeNullPlatform();
        QVERIFY(null.displays && null.grabber && null.windowList && null.captureAccess);
        QVERIFY(null.hotKeys && null.inputGrabs && null.panels && null.pins && null.compositing);
        QVERIFY(null.foreignPresses);
        QVERIFY(null.pasteboard && null.frontApplication && null.fileOpener && null.textRecognizer);
        QVERIFY(null.loginItem && null.trayHosts && null.quitSignals);
    }

    void nothingIsFoundAndNothingGranted()
    {
        const Platform null = makeNullPlatform();
        QVERIFY(null.displays->screens().empty());
        QVERIFY(!null.displays->pointer());
        QVERIFY(null.windowList->frontToBack().empty());
        std::optional<bool> opened;
        null.grabber->openRegion({0, 0, 10, 10}, {}, this,
                                 [&opened](const auto& frames) { opened = frames.ok(); });
        QCOMPARE(opened, std::optional(false));
        QVERIFY(!null.hotKeys->takeKey(PlainKey::escape, [] {}));
        QVERIFY(!null.foreignPresses->watch([] {}));
        QVERIFY(!null.trayHosts->available());
    }

    void whoAsksIsAnsweredAndToldWhatFailed()
    {
        const Platform null = makeNullPlatform();
        std::optional<ClipboardFate> copied;
        null.pasteboard->set(ClipboardContent::text(QStringLiteral("text")), this,
                             [&](ClipboardFate fate) { copied = fate; });
        std::optional<bool> opened;
        null.fileOpener->openFolder(QStringLiteral("/"), this, [&](bool done) { opened = done; });
        std::optional<bool> atLogin;
        null.loginItem->ask(this, [&](bool enabled) { atLogin = enabled; });
        std::optional<Error> failed;
        null.loginItem->set(true, this, [&](const auto& error) { failed = error; });
        std::optional<QStringList> refused;
        null.hotKeys->bind(
            {{QStringLiteral("area"), {}, 1, 0}, {QStringLiteral("recents"), {}, 2, 0}}, this,
            [](const QString&) {}, [&](const QStringList& names) { refused = names; });
        std::optional<Result<QStringList>> read;
        null.textRecognizer->warmUp();
        null.textRecognizer->recognize(QImage(), this,
                                       [&](auto text) { read.emplace(std::move(text)); });
        QVERIFY(!read); // not within the call, as elsewhere
        QCOMPARE(refused, QStringList({QStringLiteral("area"), QStringLiteral("recents")}));
        QTRY_COMPARE(copied, ClipboardFate::refused);
        QTRY_COMPARE(opened, false);
        QTRY_COMPARE(atLogin, false);
        QTRY_VERIFY(failed && !failed->message.isEmpty());
        QTRY_VERIFY(read.has_value());
        QVERIFY(!*read);
        QCOMPARE(read->error().message,
                 QStringLiteral("este sistema no tiene reconocimiento de texto"));
    }

    void panelsAndPinsAreOrdinaryWindows()
    {
        const Platform null = makeNullPlatform();
        QWidget panel;
        null.panels->assume(panel, PanelRole::toast, {});
        null.panels->show(panel, {10, 20, 300, 200});
        QVERIFY(panel.isVisible());
        QVERIFY(null.compositing->blends());
        QVERIFY(!null.panels->fade(panel, 0.5));
        QWidget widget;
        const auto pin = null.pins->make(widget, 6, [] {});
        pin->show({{10, 20, 300, 200}, 1});
        QVERIFY(widget.isVisible());
        pin->place({{30, 50, 150, 100}, 1});
        QCOMPARE(pin->rect(), QRect(30, 50, 150, 100));
        QCOMPARE(pin->pixels(), QSize(150, 100));
    }

    void withoutADesktopTheProgramGetsThem()
    {
        const auto ports = choosePorts();
        QVERIFY(ports);
        const Platform offscreen = ports.value().make();
        QVERIFY(offscreen.displays->screens().empty());
        QVERIFY(!offscreen.hotKeys->takeKey(PlainKey::escape, [] {}));
        QVERIFY(offscreen.textCatalogue.isEmpty());
    }
};

BRINDLECAM_TEST(TestNullPlatform);

} // namespace brindlecam

#include "tst_nullplatform.moc"
