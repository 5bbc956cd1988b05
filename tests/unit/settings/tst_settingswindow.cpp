// Covers SettingsLook, SettingsWindowController, SmallButton, WrappedText.
#include "SettingsFixture.h"
#include "settings/MarkerPreview.h"
#include "settings/SettingsWindow.h"
#include "settings/SmallButton.h"
#include "settings/WrappedText.h"
#include "support/TestCase.h"

#include <QAccessible>
#include <QApplication>
#include <QSlider>
#include <QTranslator>

namespace brindlecam {

using test::SettingsFixture;

namespace {

/// Another language, in which everything takes 40 % more letters.
class LongerTexts final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char*,
                                    int) const override
    {
        if (qstrcmp(context, "Brindlecam") != 0)
            return {};
        const QString text = QString::fromUtf8(source);
        QString more;
        while (more.size() < text.size() * 2 / 5)
            more += QStringLiteral(" más");
        return text + more;
    }
};

/// What does not fit into its place.
QStringList cutOff(const SettingsWindow& window)
{
    QStringList all;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (!widget->isVisible() || (!label && !button))
            continue;
        const QString words = label ? label->text() : button->text();
        const bool wraps = label && label->wordWrap();
        const bool cut = wraps ? widget->height() < widget->heightForWidth(widget->width())
                               : widget->width() < widget->sizeHint().width();
        if (cut || !window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size())))
            all << words;
    }
    return all;
}

QAccessibleInterface& told(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

} // namespace

class TestSettingsWindow final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void itIsMadeOnceAndKept()
    {
        SettingsFixture desk;
        QVERIFY(!desk.controller.window());
        SettingsWindow& window = desk.open();
        QCOMPARE(window.windowTitle(), QStringLiteral("Configuración de Brindlecam"));
        QVERIFY(window.isVisible());
        window.close();
        desk.settle();
        QVERIFY(!window.isVisible());
        QCOMPARE(&desk.open(), &window);
        QVERIFY(window.isVisible());
        QCOMPARE(desk.panels.roles, std::vector{PanelRole::window});
        QCOMPARE(desk.panels.focused.back().data(), &window);
    }

    void itComesUpInTheMiddleOfTheScreenWithThePointer_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QPoint>("middle");
        QTest::addColumn<int>("scale");
        QTest::newRow("below a dock") << QPoint(450, 50) << QPoint(960, 560) << 1;
        QTest::newRow("a dense screen") << QPoint(2000, 50) << QPoint(3360, 900) << 2;
    }
    void itComesUpInTheMiddleOfTheScreenWithThePointer()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QPoint, middle);
        QFETCH(int, scale);
        SettingsFixture desk;
        desk.displays.pointerAt = pointer;
        const QSize size = desk.open().sizeHint();
        const QRect place = desk.panels.shown.back().native;
        QCOMPARE(place.size(), size * scale);
        QVERIFY((place.center() - middle).manhattanLength() <= 2);
    }

    void escapeAndCtrlWCloseIt()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
        desk.open();
        QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!window.isVisible());
    }

    void bothColumnsAreAsWideAsTheyShouldBe()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        QCOMPARE(window.width(), 24 + 412 + 24 + 1 + 24 + 412 + 24);
        QCOMPARE(window.shortcuts().mapTo(&window, QPoint()), QPoint(24, 20));
        QCOMPARE(window.behaviour().mapTo(&window, QPoint()), QPoint(24 + 412 + 49, 20));
        QCOMPARE(window.minimumSize(), window.maximumSize());
        QCOMPARE(cutOff(window), QStringList());
    }

    void itGrowsForAWarningAndShrinksAgain()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        desk.host.failed = {CaptureAction::area, CaptureAction::fullScreen, CaptureAction::recents};
        desk.controller.hotKeysAnswered();
        QTest::qWait(0);
        QCOMPARE(cutOff(window), QStringList());
        const int top = window.marker().mapTo(&window, QPoint()).y();
        desk.host.failed.clear();
        desk.controller.hotKeysAnswered();
        QTRY_VERIFY(window.marker().mapTo(&window, QPoint()).y() < top);
    }

    void nothingIsCutOffWhereTextsAreLonger()
    {
        LongerTexts longer;
        QCoreApplication::installTranslator(&longer);
        SettingsFixture desk;
        desk.host.failed = {CaptureAction::area, CaptureAction::fullScreen, CaptureAction::recents};
        desk.addToHistory(2);
        SettingsWindow& window = desk.open();
        QTest::qWait(0);
        QVERIFY(window.behaviour().loupeBox().text().contains(QStringLiteral("más más")));
        QStringList cut = cutOff(window);
        cut.removeAll(window.behaviour().folderRow().folderLabel().text()); // cut in the middle
        QCOMPARE(cut, QStringList());
        QCoreApplication::removeTranslator(&longer);
    }

    void itBeginsOnTheScreenHoweverSmallThatIs()
    {
        SettingsFixture desk;
        desk.displays.all = {
            {QStringLiteral("A"), QRect(100, 50, 1366, 768), 1.75, QRect(100, 80, 1366, 738)}};
        desk.displays.pointerAt = QPoint(450, 90);
        desk.open();
        QCOMPARE(desk.panels.shown.back().native.topLeft(), QPoint(100, 80));
    }

    void tabWalksThroughItInReadingOrder()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        BehaviourSettings& behaviour = window.behaviour();
        FolderRow& folder = behaviour.folderRow();
        PrivacySettings& privacy = window.privacy();
        QList<QWidget*> expected{&desk.recorder(CaptureAction::area),
                                 &desk.recorder(CaptureAction::fullScreen),
                                 &desk.recorder(CaptureAction::recents),
                                 &window.marker().opacitySlider(),
                                 &behaviour.autoCopyBox(),
                                 &behaviour.autoSaveBox(),
                                 &behaviour.autoSaveAreaBox(),
                                 &folder.changeButton(),
                                 &folder.openButton(),
                                 &behaviour.loupeBox(),
                                 &behaviour.lightGifsBox(),
                                 &behaviour.loginBox(),
                                 &behaviour.updatesBox(),
                                 &privacy.historyBox(),
                                 &privacy.clearButton()};
        expected.front()->setFocus();
        for (QWidget* widget : expected) {
            QCOMPARE(QApplication::focusWidget(), widget);
            QTest::keyClick(widget, Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget(), expected.front());
    }

    void everyControlHasANameARoleAndATip()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        int controls = 0;
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible())
                continue;
            ++controls;
            QVERIFY2(!told(*widget).text(QAccessible::Name).isEmpty(),
                     widget->metaObject()->className());
            QVERIFY2(!widget->toolTip().isEmpty(), qPrintable(widget->accessibleName()));
            const QAccessible::Role role = told(*widget).role();
            QVERIFY(role == QAccessible::Button || role == QAccessible::CheckBox ||
                    role == QAccessible::Slider);
        }
        QCOMPARE(controls, 15);
        QCOMPARE(told(window.marker().opacitySlider()).valueInterface()->currentValue().toInt(),
                 40);
        QVERIFY(told(window.behaviour().autoCopyBox()).state().checked);
    }

    void whatOthersChangeIsSeenWhenTheUserComesBack()
    {
        SettingsFixture desk;
        SettingsWindow& window = desk.open();
        QWidget elsewhere;
        elsewhere.show();
        elsewhere.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&elsewhere));
        desk.prefs.setMarkerOpacity(0.9);
        desk.loginItem.enabled = true;
        desk.addToHistory(1);
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        desk.settle();
        QCOMPARE(window.marker().opacitySlider().value(), 90);
        QVERIFY(window.behaviour().loginBox().isChecked());
        QCOMPARE(window.privacy().historyLabel().text(),
                 QStringLiteral("1 captura guardada (máximo 20)."));
    }

    void aRecorderGivesTheHotKeysBackWhenTheWindowGoes()
    {
        SettingsFixture desk;
        desk.open();
        desk.recorder(CaptureAction::area).startRecording();
        QCOMPARE(desk.host.releases, 1);
        desk.controller.close();
        QCOMPARE(desk.host.reloads, 1);
        QVERIFY(!desk.controller.window()->isVisible());
    }
};

BRINDLECAM_TEST(TestSettingsWindow);

} // namespace brindlecam

#include "tst_settingswindow.moc"
