#include "DelegateDesk.h"
#include "shell/Commands.h"
#include "support/TestCase.h"

#include <QMenu>
#include <QMessageBox>

namespace brindlecam {

using test::DelegateDesk;

namespace {

QStringList itemTitles(DelegateDesk& desk)
{
    QStringList all;
    for (const QAction* item : desk.delegate.menu().menu().actions())
        all << item->text().section(QLatin1Char('\t'), 0, 0);
    return all;
}

} // namespace

/// The search for new versions, as the menu and commands ask for it.
class TestShellUpdates final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theItemLooksForAVersionAndThenOpensItsPage()
    {
        DelegateDesk desk;
        desk.delegate.start({});
        QVERIFY(itemTitles(desk).contains(QStringLiteral("Buscar actualizaciones…")));
        desk.delegate.updateFromMenu();
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.announce("99.1");
        QVERIFY(itemTitles(desk).contains(QStringLiteral("Descargar Brindlecam 99.1…")));
        QVERIFY(desk.lastShown<QMessageBox>());
        desk.delegate.updateFromMenu();
        QCOMPARE(desk.feed.asked, 1);
        QCOMPARE(desk.opener.pages, QStringList(QStringLiteral("https://x.org/es")));
    }

    void theItemTurnsBackWhenThereIsNothingNewerAnyMore()
    {
        DelegateDesk desk;
        desk.delegate.start({});
        desk.updater.check(Updater::Asker::clock);
        desk.feed.announce("99.1");
        desk.updater.check(Updater::Asker::clock);
        desk.feed.announce("0");
        QVERIFY(itemTitles(desk).contains(QStringLiteral("Buscar actualizaciones…")));
    }

    void aCommandAsksToo()
    {
        DelegateDesk desk;
        const InstanceAnswer answer = desk.delegate.answer({{"update"}, {}});
        QCOMPARE(answer.reply, InstanceReply());
        answer.carryOut();
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.answer(std::nullopt);
        QVERIFY(desk.lastShown<QMessageBox>());
        QCOMPARE(desk.lastShown<QMessageBox>()->text(),
                 QStringLiteral("No se pudo buscar actualizaciones"));
    }

    void withoutAPlaceToAskThereIsNoItemAndNoCommand()
    {
        DelegateDesk desk(test::FakeReleaseFeed::Place::none);
        desk.delegate.start({.other = ProgramAction::update});
        QVERIFY(!itemTitles(desk).contains(QStringLiteral("Buscar actualizaciones…")));
        const InstanceAnswer answer = desk.delegate.answer({{"update"}, {}});
        QCOMPARE(answer.reply.exitCode, int(Commands::wrongArguments));
        QVERIFY(answer.reply.text.startsWith("Brindlecam no entiende “update”."));
        QVERIFY(!answer.reply.text.contains("busca una versión"));
        QVERIFY(!answer.carryOut);
        desk.delegate.updateFromMenu();
        QCOMPARE(desk.feed.asked, 0);
    }
};

BRINDLECAM_TEST(TestShellUpdates);

} // namespace brindlecam

#include "tst_shellupdates.moc"
