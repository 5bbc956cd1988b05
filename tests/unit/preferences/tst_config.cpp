#include "preferences/Config.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestConfig final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void newVersionsAreAnnouncedAtTheProductsWebHost()
    {
        const auto feed = Config::updateFeedUrl();
        const QString host = QStringLiteral(BRINDLECAM_WEB_HOST);
        if (host.isEmpty()) {
            QVERIFY(!feed);
            return;
        }
        QVERIFY(feed);
        QCOMPARE(feed->toString(), QStringLiteral("https://%1/version.json").arg(host));
    }
};

BRINDLECAM_TEST(TestConfig);

} // namespace brindlecam

#include "tst_config.moc"
