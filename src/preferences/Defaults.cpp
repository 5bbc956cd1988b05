#include "preferences/Defaults.h"

#include <QStandardPaths>

#include <cmath>
#include <utility>

namespace brindlecam {

namespace {

// JSON has neither bytes nor dates: each is stored as an object with one key.
QString base64Key()
{
    return QStringLiteral("base64");
}
QString dateKey()
{
    return QStringLiteral("date");
}

} // namespace

Defaults::Defaults(QString file, std::chrono::milliseconds lockPatience)
    : m_file(std::move(file), lockPatience)
    , m_values(m_file.load())
{
    m_saver.setMaxThreadCount(1); // the last file written is never older than the one before
    m_saver.setExpiryTimeout(0);
}

Defaults::~Defaults()
{
    waitForSaves();
    if (m_unsaved.isEmpty())
        return;
    saveSoon(); // what a full disk refused; it may have room by now
    waitForSaves();
}

QString Defaults::standardFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/brindlecam/settings.json");
}

std::optional<bool> Defaults::boolean(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isBool() ? std::optional(stored.toBool()) : std::nullopt;
}

std::optional<double> Defaults::number(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isDouble() ? std::optional(stored.toDouble()) : std::nullopt;
}

std::optional<QString> Defaults::string(const QString& key) const
{
    const QJsonValue stored = value(key);
    return stored.isString() ? std::optional(stored.toString()) : std::nullopt;
}

std::optional<QByteArray> Defaults::data(const QString& key) const
{
    const QJsonValue encoded = value(key).toObject().value(base64Key());
    if (!encoded.isString())
        return std::nullopt;
    return QByteArray::fromBase64(encoded.toString().toLatin1());
}

std::optional<QDateTime> Defaults::date(const QString& key) const
{
    const QString written = value(key).toObject().value(dateKey()).toString();
    const QDateTime date = QDateTime::fromString(written, Qt::ISODate).toUTC();
    return date.isValid() ? std::optional(date) : std::nullopt;
}

bool Defaults::contains(const QString& key) const
{
    return !value(key).isUndefined();
}

QJsonValue Defaults::value(const QString& key) const
{
    const std::lock_guard lock(m_mutex);
    return std::as_const(m_values).value(key);
}

void Defaults::setBoolean(const QString& key, bool value)
{
    store(key, value);
}

void Defaults::setNumber(const QString& key, double value)
{
    if (std::isfinite(value))
        store(key, value);
}

void Defaults::setString(const QString& key, const QString& value)
{
    store(key, value);
}

void Defaults::setData(const QString& key, const QByteArray& value)
{
    store(key, QJsonObject{{base64Key(), QString::fromLatin1(value.toBase64())}});
}

void Defaults::setDate(const QString& key, const QDateTime& value)
{
    store(key, QJsonObject{{dateKey(), value.toUTC().toString(Qt::ISODate)}});
}

void Defaults::remove(const QString& key)
{
    store(key, QJsonValue::Undefined);
}

void Defaults::store(const QString& key, const QJsonValue& value)
{
    {
        const std::lock_guard lock(m_mutex);
        if (std::as_const(m_values).value(key) == value)
            return;
        m_values.insert(key, value); // undefined removes the key
        m_unsaved.insert(key, value);
    }
    saveSoon();
}

void Defaults::saveSoon()
{
    if (m_saveWaits.exchange(true))
        return;
    m_saver.start([this] {
        m_saveWaits = false;
        save();
    });
}

void Defaults::save()
{
    QJsonObject all;
    SettingsFile::Changes changes;
    {
        const std::lock_guard lock(m_mutex);
        all = m_values;
        changes = std::exchange(m_unsaved, {});
    }
    if (changes.isEmpty() || m_file.merge(changes, all))
        return;
    const std::lock_guard lock(m_mutex);
    changes.insert(m_unsaved); // what was changed meanwhile is newer
    m_unsaved = changes;
}

} // namespace brindlecam
