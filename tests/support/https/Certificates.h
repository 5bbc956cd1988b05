#pragma once

#include <QSslCertificate>
#include <QSslKey>
#include <QString>
#include <QTemporaryDir>

namespace brindlecam::https {

/// A certificate with its key.
struct Identity {
    QSslCertificate certificate;
    QSslKey key;
};

/// An authority that nobody else trusts, and what it and others say of "localhost". Made by openssl
/// when asked for; ends the test run where that fails.
class Certificates final {
public:
    Certificates();

    /// The authority's own certificate, and the file that it lies in.
    [[nodiscard]] QSslCertificate authority() const;
    [[nodiscard]] QString authorityFile() const;

    [[nodiscard]] Identity valid() { return signedFor("localhost", 2); }
    [[nodiscard]] Identity expired() { return signedFor("localhost", -1); }
    [[nodiscard]] Identity ofSomebodyElse() { return signedFor("example.org", 2); }
    [[nodiscard]] Identity selfSigned();

private:
    [[nodiscard]] Identity signedFor(const char* host, int days);
    [[nodiscard]] Identity read(const QString& name) const;
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }
    void openssl(const QStringList& arguments) const;
    /// A key, and with it whatever the arguments ask for.
    void request(const QString& name, const char* host, const QStringList& more) const;

    QTemporaryDir m_folder;
    int m_made = 0;
};

} // namespace brindlecam::https
