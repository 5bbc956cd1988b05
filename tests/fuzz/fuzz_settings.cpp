#include "FuzzTarget.h"
#include "Promise.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "unit/support/Files.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

constexpr qreal kOpacity = 0.55;
constexpr qreal kPenSize = 7;
constexpr int kOwnersFile = 0600;

const QString kName = QStringLiteral("settings.json");
const QString kDamagedName = QStringLiteral("settings.json.damaged");

bool isWithin(qreal value, const ToolSizes& range)
{
    return value >= range.minimum && value <= range.maximum;
}

/// A switch is on unless it says that it is off.
bool isLeftOn(const QJsonObject& stored, const char* key)
{
    return stored.value(QLatin1String(key)) != QJsonValue(false);
}

void checkSwitches(const Prefs& prefs, const QJsonObject& stored)
{
    BRINDLECAM_PROMISE(prefs.autoCopy() == isLeftOn(stored, "autoCopy"));
    BRINDLECAM_PROMISE(prefs.autoSaveArea() == isLeftOn(stored, "autoSaveArea"));
    BRINDLECAM_PROMISE(prefs.autoSaveFullScreen() == isLeftOn(stored, "autoSaveFullScreen"));
    BRINDLECAM_PROMISE(prefs.keepHistory() == isLeftOn(stored, "keepHistory"));
    BRINDLECAM_PROMISE(prefs.showLoupe() == isLeftOn(stored, "showLoupe"));
    BRINDLECAM_PROMISE(prefs.checkUpdates() == isLeftOn(stored, "checkUpdates"));
    const QJsonValue lightGifs = stored.value(QStringLiteral("lightGifs"));
    BRINDLECAM_PROMISE(prefs.lightGifs() == (lightGifs == QJsonValue(true)));
}

void checkRanges(const Prefs& prefs)
{
    BRINDLECAM_PROMISE(isWithin(prefs.markerOpacity(), kMarkerOpacities));
    for (const Tool tool : kAllTools) {
        const auto range = sizes(tool);
        const qreal size = prefs.size(tool);
        BRINDLECAM_PROMISE(range ? isWithin(size, *range) : size == kFixedToolSize);
    }
    BRINDLECAM_PROMISE(prefs.saveFolder().startsWith(QLatin1Char('/')));
}

void checkCombos(const Prefs& prefs)
{
    for (const CaptureAction action : kAllCaptureActions) {
        const auto combo = prefs.combo(action);
        if (!combo)
            continue;
        BRINDLECAM_PROMISE(combo->keyCode >= 0 && combo->modifiers >= 0);
        BRINDLECAM_PROMISE(KeyCombo::fromJson(combo->toJson()) == combo);
    }
}

/// Settings as a run of the program finds them, with this before it.
class SettingsOnDisk final {
public:
    explicit SettingsOnDisk(const QByteArray& bytes)
        : m_bytes(bytes)
        , m_readable(QJsonDocument::fromJson(bytes).isObject())
        , m_before(QJsonDocument::fromJson(bytes).object())
    {
        test::put(file(), bytes);
    }

    [[nodiscard]] QString file() const { return m_folder.filePath(kName); }
    [[nodiscard]] const QJsonObject& before() const { return m_before; }

    /// What is damaged lies aside as it was, anything else where it was; for nobody else to read.
    void checkRead() const
    {
        const QString name = m_readable ? kName : kDamagedName;
        BRINDLECAM_PROMISE(test::filesIn(m_folder.path()) == QStringList{name});
        BRINDLECAM_PROMISE(test::contentOf(m_folder.filePath(name)) == m_bytes);
        BRINDLECAM_PROMISE(test::modeOf(m_folder.filePath(name)) == kOwnersFile);
    }

    /// What was changed is in the file, and everything else that was there.
    void checkChanged() const
    {
        const QJsonObject after = QJsonDocument::fromJson(test::contentOf(file())).object();
        QJsonObject expected = m_before;
        expected.insert(QStringLiteral("markerOpacity"), kOpacity);
        expected.insert(QStringLiteral("size.pen"), kPenSize);
        expected.remove(QStringLiteral("saveFolder"));
        BRINDLECAM_PROMISE(after == expected);
        BRINDLECAM_PROMISE(test::modeOf(file()) == kOwnersFile);
        QStringList names{kName};
        if (!m_readable)
            names << kDamagedName;
        BRINDLECAM_PROMISE(test::filesIn(m_folder.path()) == names);
        BRINDLECAM_PROMISE(m_readable ||
                           test::contentOf(m_folder.filePath(kDamagedName)) == m_bytes);
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_bytes;
    bool m_readable;
    QJsonObject m_before;
};

void useAndChange(const SettingsOnDisk& disk)
{
    Defaults defaults(disk.file());
    Prefs prefs(defaults);
    disk.checkRead();
    checkSwitches(prefs, disk.before());
    checkRanges(prefs);
    checkCombos(prefs);
    prefs.setMarkerOpacity(kOpacity);
    prefs.setSize(kPenSize, Tool::pen);
    defaults.remove(QStringLiteral("saveFolder"));
    defaults.waitForSaves();
}

void readAgain(const SettingsOnDisk& disk)
{
    Defaults defaults(disk.file());
    const Prefs prefs(defaults);
    BRINDLECAM_PROMISE(prefs.markerOpacity() == kOpacity);
    BRINDLECAM_PROMISE(prefs.size(Tool::pen) == kPenSize);
    checkSwitches(prefs, disk.before());
}

} // namespace

} // namespace brindlecam

/// settings.json with any bytes: each setting is in its range, nothing gets lost, and nobody else
/// may read it.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    const SettingsOnDisk disk(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    useAndChange(disk);
    disk.checkChanged();
    readAgain(disk);
    return 0;
}
