// Asks the host and trusts the authority that its environment names, when it is told to ask the
// product's.
#include "feed/Fetching.h"

#include <QCoreApplication>
#include <QSslCertificate>

using namespace brindlecam;

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) != QStringLiteral("https://" BRINDLECAM_WEB_HOST "/version.json"))
        return 2;
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setCaCertificates(
        QSslCertificate::fromPath(qEnvironmentVariable("BRINDLECAM_TEST_AUTHORITY")));
    return printAnswer(QUrl(qEnvironmentVariable("BRINDLECAM_TEST_FEED")),
                       arguments.value(2).toLatin1(), security);
}
