#pragma once

#include "capture/Output.h"
#include "drawer/CaptureTile.h"
#include "drawer/DrawerPanel.h"
#include "drawer/RecentDrawer.h"
#include "drawer/TileRow.h"
#include "history/History.h"
#include "look/PanelButton.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "pictures/PngWriter.h"
#include "platform/null/NullPlatform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakeFileOpener.h"
#include "support/FakeForeignPresses.h"
#include "support/FakeFrontApplication.h"
#include "support/FakeHotKeys.h"
#include "support/FakePanels.h"
#include "support/FakePasteboard.h"
#include "support/Files.h"
#include "support/GatedExecutor.h"
#include "support/Install.h"
#include "support/OpenAlert.h"

#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>

namespace brindlecam::test {

inline const ScreenInfo kDrawerScreen{QStringLiteral("A"), QRect(0, 0, 1920, 1080), 1,
                                      QRect(0, 0, 1920, 1040)};
inline const ScreenInfo kDenseScreen{QStringLiteral("B"), QRect(1920, 0, 2880, 1800), 2,
                                     QRect(1920, 0, 2880, 1800)};

// QTest's own complain where nobody takes what they send, as in a drawer that is on its way out.

inline void sendKey(QWidget& widget, Qt::Key key)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

inline void sendClick(QWidget& widget)
{
    const QPointF place(20, 10);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

/// The drawer with what it works with, on two screens side by side; all work is done at once.
struct DrawerFixture {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    Platform platform = makeNullPlatform();
    FakeDisplays& displays = install<FakeDisplays>(platform.displays);
    FakeHotKeys& hotKeys = install<FakeHotKeys>(platform.hotKeys);
    FakeForeignPresses& presses = install<FakeForeignPresses>(platform.foreignPresses);
    FakePanels& panels = install<FakePanels>(platform.panels);
    FakeCompositing& compositing = install<FakeCompositing>(platform.compositing);
    FakePasteboard& pasteboard = install<FakePasteboard>(platform.pasteboard);
    FakeFileOpener& opener = install<FakeFileOpener>(platform.fileOpener);
    FakeFrontApplication& front = install<FakeFrontApplication>(platform.frontApplication);
    Toast toast{displays, panels, compositing};
    Alerts alerts{panels};
    Activity activity;
    QDateTime clock{QDate(2026, 3, 14), QTime(9, 26, 53)};
    History history{{folder.filePath(QStringLiteral("historia")),
                     folder.filePath(QStringLiteral("miniaturas"))},
                    [this] { return clock; }};
    Executor executor = [](const std::function<void()>& job) { job(); };
    Output output{pasteboard, history, prefs, executor};
    RecentDrawer drawer{{platform, prefs, history, output, toast, alerts, activity,
                         [this](std::function<void()> job) { executor(std::move(job)); }}};

    DrawerFixture()
    {
        displays.all = {kDrawerScreen, kDenseScreen};
        displays.pointerAt = QPoint(450, 50);
        defaults.setString(QStringLiteral("saveFolder"),
                           folder.filePath(QStringLiteral("capturas")));
    }

    /// A capture of this size and colour comes into the history; its path.
    QString add(QSize size = {300, 200}, QColor colour = Qt::red)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        history.add(PngWriter::encode(image, {.cancelled = {}}), QStringLiteral("png"), image);
        clock = clock.addSecs(1);
        return history.items().constFirst();
    }
    /// One of which no thumbnail is kept.
    QString addWithoutThumbnail(QSize size = {300, 200})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        history.add(PngWriter::encode(image, {.cancelled = {}}), QStringLiteral("png"));
        clock = clock.addSecs(1);
        return history.items().constFirst();
    }
    void addMany(int count)
    {
        for (int i = 0; i < count; ++i)
            add();
    }

    /// Opens it and waits until it stands in its place.
    void open()
    {
        drawer.show();
        sendAllPostedEvents();
        QVERIFY(drawer.panel());
    }
    [[nodiscard]] DrawerPanel& panel() const { return *drawer.panel(); }
    [[nodiscard]] const std::vector<CaptureTile*>& tiles() const
    {
        return panel().row().captureTiles();
    }
    [[nodiscard]] CaptureTile& tile(std::size_t index = 0) const { return *tiles().at(index); }
    /// What stands in the middle where there are no tiles.
    [[nodiscard]] QString sentence() const
    {
        for (const QLabel* label : panel().findChildren<QLabel*>()) {
            if (label->isVisible() && label->y() > 80)
                return label->text();
        }
        return {};
    }
    void click(QWidget& widget) const
    {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(20, 10));
        sendAllPostedEvents();
    }
    void key(Qt::Key key) const
    {
        QWidget* const focused = panel().focusWidget();
        sendKey(focused ? *focused : panel(), key);
        sendAllPostedEvents();
    }
    /// Chooses the entry of this title in the menu that was opened last.
    void choose(const char* title) const
    {
        for (const MenuEntry& entry : panels.menus.back().entries) {
            if (entry.title == QString::fromUtf8(title))
                entry.run();
        }
        sendAllPostedEvents();
    }
    /// The alert that was shown last, if one is open.
    [[nodiscard]] QMessageBox* question() const { return openAlert(panels); }
    void answer(const char* title) const { answerAlert(panels, title); }
    /// What the message on the screen says; empty without one.
    [[nodiscard]] QString said() const
    {
        if (!toast.visible())
            return {};
        return panels.shown.back().widget->accessibleName();
    }
    /// Where the message appeared.
    [[nodiscard]] QRect saidAt() const { return panels.shown.back().native; }
};

} // namespace brindlecam::test
