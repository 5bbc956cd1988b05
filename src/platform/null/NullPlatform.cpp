#include "platform/null/NullPlatform.h"

#include "base/Text.h"

#include <QMetaObject>
#include <QMouseEvent>
#include <QWidget>

#include <utility>

namespace brindlecam {

namespace {

class NullDisplays final : public Displays {
public:
    [[nodiscard]] std::vector<ScreenInfo> screens() const override { return {}; }
    [[nodiscard]] std::vector<ScreenInfo> layout() const override { return {}; }
    [[nodiscard]] std::optional<QPoint> pointer() const override { return {}; }
    void whenChanged(QObject*, std::function<void()>) override {}
};

class NullGrabber final : public Grabber {
public:
    void grabScreens(const std::vector<ScreenInfo>&, QObject*, Done done) override
    {
        done(std::vector<GrabbedScreen>());
    }
    void openRegion(const QRect&, const RegionOptions&, QObject*, Opened opened) override
    {
        opened(Error{text("No hay ninguna pantalla que capturar.")});
    }
};

class NullWindowList final : public WindowList {
public:
    [[nodiscard]] std::vector<WindowEntry> frontToBack() const override { return {}; }
};

class NullCaptureAccess final : public CaptureAccess {
public:
    [[nodiscard]] bool needsPermission() const override { return false; }
    bool request() override { return true; }
    void openSettings() override {}
};

class NullHotKeys final : public HotKeys {
public:
    void bind(const std::vector<HotKeyWish>& wishes, QObject*, Pressed, Done done) override
    {
        QStringList refused;
        for (const HotKeyWish& wish : wishes)
            refused << wish.name;
        done(refused);
    }
    [[nodiscard]] std::unique_ptr<TakenKey> takeKey(PlainKey, std::function<void()>) override
    {
        return nullptr;
    }
    [[nodiscard]] std::optional<PressedKey> read(const QKeyEvent&) const override { return {}; }
};

class NullInputGrabs final : public InputGrabs {
public:
    void clear(QObject*, Done done) override { done(Answer::free); }
};

class NullForeignPresses final : public ForeignPresses {
public:
    [[nodiscard]] std::unique_ptr<PressWatch> watch(std::function<void()>) override
    {
        return nullptr;
    }
};

class NullPanels final : public Panels {
public:
    void assume(QWidget& widget, PanelRole, const QRect& native) override
    {
        if (!native.isEmpty())
            widget.setGeometry(native);
    }
    void show(QWidget& widget, const QRect& native) override
    {
        if (!native.isEmpty())
            widget.setGeometry(native);
        widget.show();
    }
    void showAtOnce(QWidget& widget, const QRect& native, const FirstFrame&,
                    std::function<void()> mayPaint) override
    {
        show(widget, native);
        QMetaObject::invokeMethod(&widget, std::move(mayPaint), Qt::QueuedConnection);
    }
    void putAway(QWidget& widget) override { widget.hide(); }
    void place(QWidget& widget, const QRect& native) override { widget.setGeometry(native); }
    void cut(QWidget&, const QRegion&) override {}
    void focus(QWidget& widget) override { widget.activateWindow(); }
    void swallowDoubleClick() override {}
    void popUp(QWidget&, QPoint, std::vector<MenuEntry>) override {}
    [[nodiscard]] bool fade(QWidget&, double) override { return false; }
};

class NullPin final : public PinSurface {
public:
    explicit NullPin(QWidget& widget)
        : m_widget(widget)
    {
    }

    void show(const PinPlace& place) override
    {
        this->place(place);
        m_widget.show();
    }
    void place(const PinPlace& place) override { m_widget.setGeometry(place.native); }
    [[nodiscard]] QRect rect() override { return m_widget.geometry(); }
    [[nodiscard]] QSize pixels() const override { return m_widget.size(); }
    [[nodiscard]] bool blends() const override { return true; }
    [[nodiscard]] QPoint onDesktop(QPointF place) override
    {
        return m_widget.mapToGlobal(place).toPoint();
    }
    void grip() override {}
    [[nodiscard]] QPoint hand(const QMouseEvent& event) override
    {
        return event.globalPosition().toPoint();
    }
    void letGo() override {}

private:
    QWidget& m_widget;
};

class NullPins final : public Pins {
public:
    [[nodiscard]] std::unique_ptr<PinSurface> make(QWidget& widget, qreal,
                                                   std::function<void()>) override
    {
        return std::make_unique<NullPin>(widget);
    }
};

class NullCompositing final : public Compositing {
public:
    [[nodiscard]] bool blends() const override { return true; }
    void whenChanged(QObject*, std::function<void()>) override {}
    [[nodiscard]] QImage backdrop(const QRect&) override { return {}; }
};

class NullPasteboard final : public Pasteboard {
public:
    void set(ClipboardContent, QObject* context, Answer answer) override
    {
        QMetaObject::invokeMethod(
            context, [answer = std::move(answer)] { answer(ClipboardFate::refused); },
            Qt::QueuedConnection);
    }
    void reveal() override {}
    void handOver(QObject* context, std::function<void()> done) override
    {
        QMetaObject::invokeMethod(context, std::move(done), Qt::QueuedConnection);
    }
};

class NullFrontApplication final : public FrontApplication {
public:
    void remember() override {}
    void giveBack() override {}
};

class NullFileOpener final : public FileOpener {
public:
    void openFolder(const QString&, QObject* context, Done done) override { refuse(context, done); }
    void openFile(const QString&, QObject* context, Done done) override { refuse(context, done); }
    void openPage(const QUrl&, QObject* context, Done done) override { refuse(context, done); }
    void reveal(const QString&, QObject* context, Done done) override { refuse(context, done); }
    void preview(const QString&, QObject* context, Done done) override { refuse(context, done); }
    void endPreview() override {}

private:
    static void refuse(QObject* context, const Done& done)
    {
        QMetaObject::invokeMethod(
            context, [done] { done(false); }, Qt::QueuedConnection);
    }
};

class NullLoginItem final : public LoginItem {
public:
    void ask(QObject* context, Known known) override
    {
        QMetaObject::invokeMethod(
            context, [known = std::move(known)] { known(false); }, Qt::QueuedConnection);
    }
    void set(bool, QObject* context, Done done) override
    {
        QMetaObject::invokeMethod(
            context,
            [done = std::move(done)] {
                done(Error{text("Este sistema no abre programas al iniciar sesión.")});
            },
            Qt::QueuedConnection);
    }
};

class NullTextRecognizer final : public TextRecognizer {
public:
    void warmUp() override {}
    void recognize(const QImage&, QObject* context, Done done) override
    {
        QMetaObject::invokeMethod(
            context,
            [done = std::move(done)] {
                done(Error{text("este sistema no tiene reconocimiento de texto")});
            },
            Qt::QueuedConnection);
    }
};

class NullTrayHosts final : public TrayHosts {
public:
    [[nodiscard]] bool available() const override { return false; }
    void whenChanged(QObject*, std::function<void()>) override {}
};

class NullQuitSignals final : public QuitSignals {
public:
    void whenAsked(QObject*, std::function<void()>) override {}
};

bool anywhere(const Session&)
{
    return true;
}

template <typename Null, typename Port>
PortList<Port> listOf(const char* name, std::unique_ptr<Port> Platform::*member,
                      const char* className)
{
    return {name, member, {"null", className, anywhere, std::make_unique<Null>}};
}

} // namespace

PortOffers nullOffers()
{
    return {
        .displays = listOf<NullDisplays>("displays", &Platform::displays, "NullDisplays"),
        .grabber = listOf<NullGrabber>("grabber", &Platform::grabber, "NullGrabber"),
        .windowList = listOf<NullWindowList>("windowList", &Platform::windowList, "NullWindowList"),
        .captureAccess = listOf<NullCaptureAccess>("captureAccess", &Platform::captureAccess,
                                                   "NullCaptureAccess"),
        .hotKeys = listOf<NullHotKeys>("hotKeys", &Platform::hotKeys, "NullHotKeys"),
        .inputGrabs = listOf<NullInputGrabs>("inputGrabs", &Platform::inputGrabs, "NullInputGrabs"),
        .foreignPresses = listOf<NullForeignPresses>("foreignPresses", &Platform::foreignPresses,
                                                     "NullForeignPresses"),
        .panels = listOf<NullPanels>("panels", &Platform::panels, "NullPanels"),
        .pins = listOf<NullPins>("pins", &Platform::pins, "NullPins"),
        .compositing =
            listOf<NullCompositing>("compositing", &Platform::compositing, "NullCompositing"),
        .pasteboard = listOf<NullPasteboard>("pasteboard", &Platform::pasteboard, "NullPasteboard"),
        .frontApplication = listOf<NullFrontApplication>(
            "frontApplication", &Platform::frontApplication, "NullFrontApplication"),
        .fileOpener = listOf<NullFileOpener>("fileOpener", &Platform::fileOpener, "NullFileOpener"),
        .loginItem = listOf<NullLoginItem>("loginItem", &Platform::loginItem, "NullLoginItem"),
        .textRecognizer = listOf<NullTextRecognizer>("textRecognizer", &Platform::textRecognizer,
                                                     "NullTextRecognizer"),
        .trayHosts = listOf<NullTrayHosts>("trayHosts", &Platform::trayHosts, "NullTrayHosts"),
        .quitSignals =
            listOf<NullQuitSignals>("quitSignals", &Platform::quitSignals, "NullQuitSignals"),
    };
}

Platform makeNullPlatform()
{
    Platform platform;
    nullOffers().forEach([&](auto& list) { platform.*list.member = list.null.make(); });
    return platform;
}

} // namespace brindlecam
