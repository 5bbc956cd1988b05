// Covers TesseractEngine.
#include "reading/TextEngineModule.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace brindlecam {

class TestTextEngineModule final : public test::TestCase {
    Q_OBJECT

private:
    static bool write(const QString& path, const QByteArray& content)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

private Q_SLOTS:
    void whatKeepsTheModuleFromLoadingIsNamed_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("message");
        QTest::newRow("a library it needs is missing")
            << QStringLiteral(BRINDLECAM_NEEDY_ENGINE)
            << QStringLiteral("falta la biblioteca libbrindlecam_absent.so");
        QTest::newRow("it is no engine, or another version's")
            << QStringLiteral(BRINDLECAM_ABSENT_LIBRARY)
            << QStringLiteral("el módulo brindlecam_ocr está dañado o es de otra versión");
        QTest::newRow("it is not there") << QStringLiteral("/nowhere/brindlecam_ocr.so")
                                         << QStringLiteral("falta el módulo brindlecam_ocr");
    }
    void whatKeepsTheModuleFromLoadingIsNamed()
    {
        QFETCH(QString, module);
        QFETCH(QString, message);
        const auto loaded = TextEngineModule::load(module);
        QVERIFY(!loaded);
        QCOMPARE(loaded.error().message, message);
    }

    void aDamagedModuleIsToldAsSuch_data()
    {
        QTest::addColumn<QByteArray>("content");
        QFile whole(QStringLiteral(BRINDLECAM_ABSENT_LIBRARY));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("something else") << QByteArray("no library at all\n").repeated(100);
        QTest::newRow("cut off") << whole.read(40);
    }
    void aDamagedModuleIsToldAsSuch()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir folder;
        // A folder that looks like what the system says of a missing library.
        QVERIFY(QDir(folder.path()).mkpath(QStringLiteral("(libfoo.so: x")));
        const QString module = folder.filePath(QStringLiteral("(libfoo.so: x/brindlecam_ocr.so"));
        QVERIFY(write(module, content));
        const auto loaded = TextEngineModule::load(module);
        QVERIFY(!loaded);
        QCOMPARE(loaded.error().message,
                 QStringLiteral("el módulo brindlecam_ocr está dañado o es de otra versión"));
    }

    void anEngineThatCannotReadAPictureSaysSo()
    {
        const auto loaded = TextEngineModule::load(TextEngineModule::usualPath());
        QVERIFY(loaded.ok());
        constexpr int kTooWide = 40000;
        const std::vector<unsigned char> white(std::size_t(kTooWide) * 30, 255);
        QVERIFY(!loaded.value()->engine().read(white.data(), kTooWide, 30, kTooWide, {}));
        QVERIFY(loaded.value()->engine().read(white.data(), 400, 30, 400, {}));
    }

    void theEngineListensLineByLine()
    {
        const auto loaded = TextEngineModule::load(TextEngineModule::usualPath());
        QVERIFY(loaded.ok());
        constexpr int kLines = 12;
        const QImage page =
            test::writtenPage(QStringList(kLines, QStringLiteral("Una línea entre muchas otras")))
                .convertToFormat(QImage::Format_Grayscale8);
        std::atomic<bool> wanted = false;
        std::atomic<int> looks = 0;
        const auto read = [&] {
            looks = 0;
            return loaded.value()->engine().read(page.constBits(), page.width(), page.height(),
                                                 static_cast<int>(page.bytesPerLine()),
                                                 StopRequest(wanted, looks));
        };
        const auto whole = read();
        QVERIFY(whole && !whole->empty());
        QVERIFY2(looks >= kLines, qPrintable(QString::number(looks)));
        wanted = true;
        const auto givenUp = read();
        QVERIFY(givenUp && givenUp->empty());
        QVERIFY2(looks < kLines / 2, qPrintable(QString::number(looks)));
    }

    void theModuleIsBesideTheProgramOrInItsLibraryFolder()
    {
        QTemporaryDir prefix;
        const QDir root(prefix.path());
        const QString program = root.filePath(QStringLiteral("libexec/brindlecam"));
        QVERIFY(root.mkpath(program) && root.mkpath(QStringLiteral("lib/brindlecam")));
        const QString installed = root.filePath(QStringLiteral("lib/brindlecam/brindlecam_ocr.so"));
        const QString beside = program + QStringLiteral("/brindlecam_ocr.so");
        QVERIFY(write(installed, "x"));
        const auto found = [&program] {
            return QDir::cleanPath(TextEngineModule::usualPath(program));
        };
        QCOMPARE(found(), installed);
        QVERIFY(write(beside, "x"));
        QCOMPARE(found(), beside);
    }
};

BRINDLECAM_TEST(TestTextEngineModule);

} // namespace brindlecam

#include "tst_textenginemodule.moc"
