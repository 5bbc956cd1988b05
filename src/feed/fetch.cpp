// What the program starts to look for a new version: prints what the address of its first argument
// says to whom the second names, and ends with 0; or with 1, and prints nothing.
#include "feed/Fetching.h"

#include <QCoreApplication>
#include <QNetworkProxyFactory>

using namespace brindlecam;

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    const QStringList arguments = QCoreApplication::arguments();
    return printAnswer(QUrl(arguments.value(1), QUrl::StrictMode), arguments.value(2).toLatin1(),
                       QSslConfiguration::defaultConfiguration());
}
