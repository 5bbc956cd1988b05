#include "settings/FeedProcess.h"
#include "support/Files.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>

namespace brindlecam {

namespace {

const QUrl kFeed(QStringLiteral("https://example.org/version.json"));

} // namespace

class TestFeedProcess final : public test::TestCase {
    Q_OBJECT

private:
    struct Answer {
        bool done = false;
        std::optional<QByteArray> body;
    };

    QTemporaryDir m_folder;

    /// A program of one line.
    [[nodiscard]] QString program(const char* line) const
    {
        const QString path = m_folder.filePath(QStringLiteral("fetch"));
        test::put(path, QByteArray("#!/bin/sh\n") + line + '\n');
        test::setMode(path, 0755);
        return path;
    }
    [[nodiscard]] static Answer ask(const QString& path,
                                    std::chrono::milliseconds patience = std::chrono::seconds(20))
    {
        FeedProcess feed(path, kFeed, QStringLiteral("Brindlecam/1.0"), patience);
        Answer answer;
        QObject context;
        feed.fetch(&context, [&](std::optional<QByteArray> body) {
            answer = {true, std::move(body)};
        });
        [&] {
            QVERIFY(!answer.done); // not before the call returns
            QTRY_VERIFY(answer.done);
        }();
        return answer;
    }

private Q_SLOTS:
    void bringsWhatTheProgramPrints()
    {
        QCOMPARE(ask(program("printf '%s|%s' \"$1\" \"$2\"")).body,
                 QByteArray("https://example.org/version.json|Brindlecam/1.0"));
    }

    void whatFailsBringsNothing_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("it says so") << QByteArray("printf '{}'; exit 1");
        QTest::newRow("it crashes") << QByteArray("printf '{}'; kill -SEGV $$");
    }
    void whatFailsBringsNothing()
    {
        QFETCH(QByteArray, line);
        QVERIFY(!ask(program(line.constData())).body);
    }

    void aProgramThatIsNotThereIsAFailure()
    {
        QVERIFY(!ask(m_folder.filePath(QStringLiteral("nowhere"))).body);
    }

    void whoTakesTooLongIsEnded()
    {
        QVERIFY(!ask(program("exec sleep 1000"), std::chrono::milliseconds(100)).body);
    }

    void itEndsWithWhoAsked()
    {
        const QString pidFile = m_folder.filePath(QStringLiteral("pid"));
        FeedProcess feed(
            program(("echo $$ > " + pidFile.toUtf8() + "; exec sleep 1000").constData()), kFeed,
            {});
        auto context = std::make_unique<QObject>();
        bool answered = false;
        feed.fetch(context.get(), [&](const auto&) { answered = true; });
        QTRY_VERIFY(test::contentOf(pidFile).endsWith('\n'));
        const pid_t pid = test::contentOf(pidFile).trimmed().toInt();
        context.reset();
        QCOMPARE(::kill(pid, 0), -1);
        QVERIFY(!answered);
    }

    void existsWhereThereIsAPlaceToAsk()
    {
        QVERIFY(FeedProcess(program("true"), kFeed, {}).exists());
        QVERIFY(!FeedProcess(program("true"), std::nullopt, {}).exists());
    }

    void liesBesideTheProgram()
    {
        QCOMPARE(FeedProcess::standardProgram(),
                 QCoreApplication::applicationDirPath() + QStringLiteral("/brindlecam_fetch"));
    }
};

BRINDLECAM_TEST(TestFeedProcess);

} // namespace brindlecam

#include "tst_feedprocess.moc"
