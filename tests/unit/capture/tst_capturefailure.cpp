#include "capture/CaptureFailure.h"
#include "notices/Alerts.h"
#include "preferences/Defaults.h"
#include "support/FakeCaptureAccess.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

QMessageBox* shownAlert()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible())
            return box;
    }
    return nullptr;
}

} // namespace

class TestCaptureFailure final : public test::TestCase {
    Q_OBJECT

private:
    struct Fixture {
        QTemporaryDir folder;
        Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
        test::FakePanels panels;
        Alerts alerts{panels};
        test::FakeCaptureAccess access;
        CaptureFailure failure;

        explicit Fixture(CaptureFailure::Voice voice = CaptureFailure::Voice::alerts)
            : failure(access, alerts, defaults, voice)
        {
        }
        void fail() { failure.handle({QStringLiteral("denegado")}); }
    };

private Q_SLOTS:
    void theFirstRefusalShowsOnlyTheSystemsPromptAndLaterOnesOurAlert()
    {
        Fixture f;
        f.fail();
        QCOMPARE(f.access.requests, 1);
        QVERIFY(!shownAlert());
        f.fail();
        QCOMPARE(f.access.requests, 2);
        QMessageBox* alert = shownAlert();
        QVERIFY(alert);
        QCOMPARE(alert->text(),
                 QStringLiteral("Brindlecam necesita permiso para capturar la pantalla"));
        QVERIFY(alert->informativeText().endsWith(QStringLiteral("\n\n(denegado)")));
        QCOMPARE(alert->buttons().size(), 2);
        QCOMPARE(alert->buttons().at(0)->text(), QStringLiteral("Abrir Ajustes"));
        QCOMPARE(alert->buttons().at(1)->text(), QStringLiteral("Cancelar"));
        alert->buttons().at(0)->click();
        QCOMPARE(f.access.settingsOpened, 1);
    }

    void cancellingTheAlertOpensNothing()
    {
        Fixture f;
        f.fail();
        f.fail();
        shownAlert()->buttons().at(1)->click();
        QCOMPARE(f.access.settingsOpened, 0);
    }

    void aPermissionThatIsGivenAfterAllShowsNoAlert()
    {
        Fixture f;
        f.fail();
        f.access.granted = true;
        f.fail();
        QVERIFY(!shownAlert());
    }

    void withoutAPermissionToAskForTheFirstFailureIsTold()
    {
        Fixture f;
        f.access.needed = false;
        f.fail();
        QMessageBox* alert = shownAlert();
        QVERIFY(alert);
        QCOMPARE(alert->text(), QStringLiteral("No se pudo capturar la pantalla"));
        QVERIFY(alert->informativeText().contains(QStringLiteral("denegado")));
        QCOMPARE(alert->buttons().size(), 1);
        QCOMPARE(f.access.requests, 0);
    }

    void oneAlertIsEnoughHoweverOftenItFails()
    {
        Fixture f;
        f.access.needed = false;
        f.fail();
        f.fail();
        QCOMPARE(f.panels.visibleNow(), 1);
        shownAlert()->buttons().at(0)->click();
        f.fail();
        QVERIFY(shownAlert());
    }

    void liveTestsStaySilentAndTouchNothing()
    {
        Fixture f(CaptureFailure::Voice::silent);
        f.fail();
        f.fail();
        QVERIFY(!shownAlert());
        QCOMPARE(f.access.requests, 0);
        QVERIFY(!f.defaults.contains(QStringLiteral("didRequestScreenCapture")));
    }
};

BRINDLECAM_TEST(TestCaptureFailure);

} // namespace brindlecam

#include "tst_capturefailure.moc"
