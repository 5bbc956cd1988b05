#include "https/Certificates.h"

#include <QFile>
#include <QProcess>

namespace brindlecam::https {

namespace {

const QString kAuthority = QStringLiteral("authority");

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s was not made", qPrintable(path));
    return file.readAll();
}

} // namespace

Certificates::Certificates()
{
    request(kAuthority, "Prueba",
            {QStringLiteral("-x509"), QStringLiteral("-days"), QStringLiteral("2")});
}

QSslCertificate Certificates::authority() const
{
    return read(kAuthority).certificate;
}

QString Certificates::authorityFile() const
{
    return file(kAuthority + QStringLiteral(".pem"));
}

Identity Certificates::selfSigned()
{
    const QString name = QString::number(++m_made);
    request(name, "localhost",
            {QStringLiteral("-x509"), QStringLiteral("-days"), QStringLiteral("2"),
             QStringLiteral("-addext"), QStringLiteral("subjectAltName=DNS:localhost")});
    return read(name);
}

Identity Certificates::signedFor(const char* host, int days)
{
    const QString name = QString::number(++m_made);
    const QString wish = file(name + QStringLiteral(".csr"));
    const QString names = file(name + QStringLiteral(".ext"));
    QFile extension(names);
    if (!extension.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(names));
    extension.write(QByteArray("subjectAltName=DNS:") + host);
    extension.close();
    request(name, host, {});
    openssl({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"),
             file(name + QStringLiteral(".pem")), QStringLiteral("-CA"), authorityFile(),
             QStringLiteral("-CAkey"), file(kAuthority + QStringLiteral(".key")),
             QStringLiteral("-CAcreateserial"), QStringLiteral("-days"), QString::number(days),
             QStringLiteral("-extfile"), names, QStringLiteral("-out"), wish});
    return {QSslCertificate(contentOf(wish)), read(name).key};
}

Identity Certificates::read(const QString& name) const
{
    return {QSslCertificate(contentOf(file(name + QStringLiteral(".pem")))),
            QSslKey(contentOf(file(name + QStringLiteral(".key"))), QSsl::Ec)};
}

void Certificates::request(const QString& name, const char* host, const QStringList& more) const
{
    openssl(QStringList{QStringLiteral("req"), QStringLiteral("-newkey"), QStringLiteral("ec"),
                        QStringLiteral("-pkeyopt"), QStringLiteral("ec_paramgen_curve:P-256"),
                        QStringLiteral("-nodes"), QStringLiteral("-keyout"),
                        file(name + QStringLiteral(".key")), QStringLiteral("-out"),
                        file(name + QStringLiteral(".pem")), QStringLiteral("-subj"),
                        QStringLiteral("/CN=") + QString::fromLatin1(host)} +
            more);
}

void Certificates::openssl(const QStringList& arguments) const
{
    QProcess process;
    process.start(QStringLiteral("openssl"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("openssl %s: %s", qPrintable(arguments.join(QLatin1Char(' '))),
               process.readAllStandardError().constData());
}

} // namespace brindlecam::https
