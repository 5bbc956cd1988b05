#include "DelegateDesk.h"
#include "shell/Actions.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

namespace {

/// The list of a program, and a look at all of it.
struct ListDesk : test::DelegateDesk {
    using DelegateDesk::DelegateDesk;

    Actions list = makeActions(delegate, prefs);

    [[nodiscard]] std::vector<const Action*> all() const
    {
        std::vector<const Action*> found;
        for (const auto& [id, action] : list.captures)
            found.push_back(&action);
        for (const Action& action : list.delayed)
            found.push_back(&action);
        for (const auto& [id, action] : list.others)
            found.push_back(&action);
        return found;
    }
    [[nodiscard]] QStringList runnable() const
    {
        QStringList titles;
        for (const Action* action : all()) {
            if (action->canRun())
                titles << action->title;
        }
        return titles;
    }
};

const QStringList kHarmless{QStringLiteral("Abrir carpeta de capturas"),
                            QStringLiteral("Acerca de Brindlecam"), QStringLiteral("Salir")};

} // namespace

class TestActions final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everythingCanBeAskedOfEachOfThem()
    {
        const ListDesk desk;
        for (const Action* action : desk.all()) {
            QVERIFY(!action->title.isEmpty());
            QVERIFY2(action->key, qPrintable(action->title));
            QVERIFY2(action->canRun, qPrintable(action->title));
            QVERIFY2(action->run, qPrintable(action->title));
            QVERIFY2(action->runFromMenu, qPrintable(action->title));
        }
        for (const CaptureAction id : kAllCaptureActions)
            QCOMPARE(desk.list.captures.at(id).title, title(id));
    }

    void everythingCanRunAtRest()
    {
        const ListDesk desk;
        QStringList expected{QStringLiteral("Capturar área"),
                             QStringLiteral("Capturar pantalla completa"),
                             QStringLiteral("Capturas recientes")};
        for (const Action& action : desk.list.delayed)
            expected << action.title;
        expected += kHarmless;
        const qsizetype about = expected.indexOf(kHarmless.at(1));
        expected.insert(about, QStringLiteral("Buscar actualizaciones…"));
        expected.insert(about, QStringLiteral("Configuración…"));
        QCOMPARE(desk.runnable(), expected);
    }

    void nothingThatCapturesCanRunWhileTheProgramEnds()
    {
        ListDesk desk;
        desk.activity.stage = Activity::Stage::quitting;
        QCOMPARE(desk.runnable(), kHarmless);
    }

    void withoutAPlaceToAskThereIsNoSearchForNewVersions()
    {
        const ListDesk desk;
        QVERIFY(desk.list.find(ProgramAction::update));
        const ListDesk without(test::FakeReleaseFeed::Place::none);
        QVERIFY(!without.list.find(ProgramAction::update));
    }

    void capturesBeginAtOnceButNotUnderAMenu()
    {
        ListDesk desk;
        const Action& action = desk.list.captures.at(CaptureAction::fullScreen);
        action.run();
        QCOMPARE(desk.grabber.calls, 1);
        action.runFromMenu();
        QCOMPARE(desk.grabber.calls, 1);
        QTRY_COMPARE(desk.grabber.calls, 2);
    }

    void keysAreThoseOfTheSettingsAtAnyTime()
    {
        ListDesk desk;
        const Action& action = desk.list.captures.at(CaptureAction::area);
        QCOMPARE(action.key(), std::optional(defaultCombo(CaptureAction::area)));
        desk.prefs.setCombo(std::nullopt, CaptureAction::area);
        QCOMPARE(action.key(), std::optional<KeyCombo>());
        QVERIFY(desk.list.others.at(ProgramAction::settings).key());
        QVERIFY(!desk.list.others.at(ProgramAction::quit).key());
    }
};

BRINDLECAM_TEST(TestActions);

} // namespace brindlecam

#include "tst_actions.moc"
