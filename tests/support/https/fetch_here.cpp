// Asks the host and trusts the authority that its environment names, whatever it is told to ask.
#include "feed/FeedRequest.h"

#include <QCoreApplication>

#include <cstdio>

using namespace brindlecam;

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setCaCertificates(
        QSslCertificate::fromPath(qEnvironmentVariable("BRINDLECAM_TEST_AUTHORITY")));
    const FeedRequest request(
        QUrl(qEnvironmentVariable("BRINDLECAM_TEST_FEED")),
        QCoreApplication::arguments().value(2).toLatin1(), security, {}, [](const auto& body) {
            const auto bytes = static_cast<std::size_t>(body.value_or(QByteArray()).size());
            if (body)
                std::fwrite(body->constData(), 1, bytes, stdout);
            QCoreApplication::exit(body ? 0 : 1);
        });
    return QCoreApplication::exec();
}
