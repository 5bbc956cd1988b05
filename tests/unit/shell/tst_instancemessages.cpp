#include "shell/InstanceMessages.h"
#include "shell/InstanceProtocol.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestInstanceMessages final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyRequestReadsBackAsItself_data()
    {
        QTest::addColumn<QByteArrayList>("words");
        QTest::addColumn<QByteArray>("folder");
        QByteArray allBytes;
        for (int byte = 0; byte < 256; ++byte)
            allBytes += static_cast<char>(byte);
        QTest::newRow("opened again") << QByteArrayList() << QByteArray("/home/ana");
        QTest::newRow("a word") << QByteArrayList({"area"}) << QByteArray("/home/ana");
        QTest::newRow("no folder") << QByteArrayList({"area"}) << QByteArray();
        QTest::newRow("neither") << QByteArrayList() << QByteArray();
        QTest::newRow("an empty word") << QByteArrayList({""}) << QByteArray("/");
        QTest::newRow("empty words between others")
            << QByteArrayList({"", "area", "", ""}) << QByteArray();
        QTest::newRow("spaces, quotes, line feeds")
            << QByteArrayList({"mis capturas", "\"a\" 'b'", "uno\ndos\r\n", "\t"})
            << QByteArray("/home/ana/Mis cosas\n");
        QTest::newRow("per cent") << QByteArrayList({"100%", "%20", "%"}) << QByteArray("/%41");
        QTest::newRow("every byte") << QByteArrayList({allBytes}) << allBytes;
    }
    void everyRequestReadsBackAsItself()
    {
        QFETCH(QByteArrayList, words);
        QFETCH(QByteArray, folder);
        const InstanceRequest request{words, folder};
        const QByteArray line = InstanceMessages::line(request);
        QCOMPARE(line.count('\n'), 1);
        QVERIFY(line.endsWith('\n'));
        const auto read = InstanceMessages::readRequest(line);
        QVERIFY(std::holds_alternative<InstanceRequest>(read));
        QCOMPARE(std::get<InstanceRequest>(read), request);
    }

    void aRequestLooksLikeThis()
    {
        QCOMPARE(InstanceMessages::line({{"area", "día 1"}, "/home/ana"}),
                 QByteArray("1 area d%C3%ADa%201 %2Fhome%2Fana\n"));
        QCOMPARE(InstanceMessages::line({{}, "/"}), QByteArray("1 %2F\n"));
    }

    void anotherVersionIsToldFromNonsense_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<bool>("otherVersion");
        QTest::newRow("a later version") << QByteArray("2 area %2F\n") << true;
        QTest::newRow("a later version with other fields") << QByteArray("17\n") << true;
        QTest::newRow("an earlier version") << QByteArray("0 area %2F\n") << true;
        QTest::newRow("no version") << QByteArray("area\n") << false;
        QTest::newRow("no folder") << QByteArray("1\n") << false;
        QTest::newRow("no end") << QByteArray("1 area %2F") << false;
        QTest::newRow("an empty line") << QByteArray("\n") << false;
        QTest::newRow("nothing") << QByteArray() << false;
        QTest::newRow("a signed version") << QByteArray("+1 area %2F\n") << false;
        QTest::newRow("a version with a zero before it") << QByteArray("01 area %2F\n") << false;
        QTest::newRow("a huge version") << QByteArray("99999999999 area %2F\n") << false;
        QTest::newRow("half an escape") << QByteArray("1 area%2 %2F\n") << false;
        QTest::newRow("an escape of no byte") << QByteArray("1 area%zz %2F\n") << false;
        QTest::newRow("small hex digits") << QByteArray("1 area%c3 %2F\n") << false;
        QTest::newRow("an escape that need not be") << QByteArray("1 are%61 %2F\n") << false;
        QTest::newRow("bytes as they are") << QByteArray("1 /home/d\xc3\xad\n") << false;
    }
    void anotherVersionIsToldFromNonsense()
    {
        QFETCH(QByteArray, line);
        QFETCH(bool, otherVersion);
        const auto read = InstanceMessages::readRequest(line);
        QVERIFY(!std::holds_alternative<InstanceRequest>(read));
        QCOMPARE(std::holds_alternative<InstanceMessages::OtherVersion>(read), otherVersion);
    }

    void everyReplyReadsBackAsItself()
    {
        for (const InstanceReply& reply :
             {InstanceReply{0, ""}, InstanceReply{4, "Ya hay una captura en curso.\n"},
              InstanceReply{64, "dos\nlíneas\n\n"}})
            QCOMPARE(InstanceMessages::readReply(InstanceMessages::bytes(reply)),
                     std::optional(reply));
        QCOMPARE(InstanceMessages::bytes({3, "No.\n"}), QByteArray("3\nNo.\n"));
    }

    void anythingElseIsNoReply_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a code without its end") << QByteArray("0");
        QTest::newRow("a line feed alone") << QByteArray("\n0");
        QTest::newRow("a word") << QByteArray("ok\n");
        QTest::newRow("a negative code") << QByteArray("-1\n");
        QTest::newRow("a code with a zero before it") << QByteArray("00\n");
        QTest::newRow("a code that nothing ends with") << QByteArray("256\n");
    }
    void anythingElseIsNoReply()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(InstanceMessages::readReply(bytes), std::nullopt);
    }
};

BRINDLECAM_TEST(TestInstanceMessages);

} // namespace brindlecam

#include "tst_instancemessages.moc"
