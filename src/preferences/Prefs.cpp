#include "preferences/Prefs.h"

#include "preferences/Defaults.h"

#include <QDateTime>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>

namespace brindlecam {

namespace {

const QString kMarkerOpacityKey = QStringLiteral("markerOpacity");

QString sizeKey(Tool tool)
{
    return QStringLiteral("size.") + name(tool);
}

QString comboKey(CaptureAction action)
{
    return QStringLiteral("hotkey.") + rawValue(action);
}

} // namespace

Prefs::Prefs(Defaults& defaults)
    : m_defaults(defaults)
{
}

bool Prefs::isOn(const char* key) const
{
    return m_defaults.boolean(QString::fromLatin1(key)).value_or(true);
}

bool Prefs::autoCopy() const
{
    return isOn("autoCopy");
}

bool Prefs::autoSaveArea() const
{
    return isOn("autoSaveArea");
}

bool Prefs::autoSaveFullScreen() const
{
    return isOn("autoSaveFullScreen");
}

bool Prefs::keepHistory() const
{
    return isOn("keepHistory");
}

bool Prefs::showLoupe() const
{
    return isOn("showLoupe");
}

bool Prefs::checkUpdates() const
{
    return isOn("checkUpdates");
}

bool Prefs::lightGifs() const
{
    return m_defaults.boolean(QStringLiteral("lightGifs")).value_or(false);
}

double Prefs::markerOpacity() const
{
    const double stored = m_defaults.number(kMarkerOpacityKey).value_or(kMarkerOpacities.standard);
    return std::clamp(stored, kMarkerOpacities.minimum, kMarkerOpacities.maximum);
}

void Prefs::setMarkerOpacity(double opacity)
{
    m_defaults.setNumber(kMarkerOpacityKey,
                         std::clamp(opacity, kMarkerOpacities.minimum, kMarkerOpacities.maximum));
}

double Prefs::size(Tool tool) const
{
    const std::optional<ToolSizes> range = sizes(tool);
    if (!range)
        return kFixedToolSize;
    const double stored = m_defaults.number(sizeKey(tool)).value_or(range->standard);
    return std::clamp(stored, range->minimum, range->maximum);
}

void Prefs::setSize(double size, Tool tool)
{
    if (const std::optional<ToolSizes> range = sizes(tool))
        m_defaults.setNumber(sizeKey(tool), std::clamp(size, range->minimum, range->maximum));
}

QString Prefs::saveFolder() const
{
    const QString stored = m_defaults.string(QStringLiteral("saveFolder")).value_or(QString());
    if (stored.startsWith(QLatin1String("~/")))
        return QDir::cleanPath(QDir::homePath() + QLatin1Char('/') + stored.mid(2));
    // Relative to what? A program started by a session has no working folder of its own. Not
    // QDir::isAbsolutePath(), which is true of Qt's resources (":/…"), too.
    if (stored.startsWith(QLatin1Char('/')))
        return stored;
    QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    if (pictures.isEmpty())
        pictures = QDir::homePath();
    return QDir::cleanPath(pictures + QStringLiteral("/Brindlecam"));
}

QString Prefs::newFileName(const QString& fileExtension)
{
    const QString moment =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH.mm.ss"));
    return QStringLiteral("Brindlecam %1.%2").arg(moment, fileExtension);
}

std::optional<KeyCombo> Prefs::combo(CaptureAction action) const
{
    const std::optional<QByteArray> stored = m_defaults.data(comboKey(action));
    return stored ? KeyCombo::fromJson(*stored) : defaultCombo(action);
}

void Prefs::setCombo(const std::optional<KeyCombo>& combo, CaptureAction action)
{
    // Empty data rather than no key: a cleared shortcut stays cleared.
    m_defaults.setData(comboKey(action), combo ? combo->toJson() : QByteArray());
}

} // namespace brindlecam
