#include "base/KeyCombo.h"

#include "base/Text.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <array>

namespace brindlecam {

namespace {

struct NamedKey {
    int keyCode;
    const char* symbol; ///< as stored in `display`
    const char* word;   ///< as shown where shortcuts are written in words
};

constexpr std::array kFunctionKeys{122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                   103, 111, 105, 107, 113, 106, 64, 79,  80,  90};

constexpr std::array kNamedKeys{
    NamedKey{49, "Espacio", "Espacio"},
    NamedKey{36, "↩", "Intro"},
    NamedKey{48, "⇥", "Tab"},
    NamedKey{123, "←", "←"},
    NamedKey{124, "→", "→"},
    NamedKey{126, "↑", "↑"},
    NamedKey{125, "↓", "↓"},
    NamedKey{115, "↖", "Inicio"},
    NamedKey{119, "↘", "Fin"},
    NamedKey{116, "⇞", "RePág"},
    NamedKey{121, "⇟", "AvPág"},
    NamedKey{117, "⌦", "Supr"},
    NamedKey{114, "Insert", "Insert"},
};

struct ModifierName {
    int bit;
    const char* symbol;
    const char* word;
};

constexpr std::array kModifiers{
    ModifierName{controlModifier, "⌃", "Ctrl"},
    ModifierName{optionModifier, "⌥", "Alt"},
    ModifierName{shiftModifier, "⇧", "Mayús"},
    ModifierName{commandModifier, "⌘", "Super"},
};

const NamedKey* namedKey(int keyCode)
{
    for (const NamedKey& key : kNamedKeys) {
        if (key.keyCode == keyCode)
            return &key;
    }
    return nullptr;
}

} // namespace

std::optional<QString> KeyCombo::functionKeyName(int keyCode)
{
    for (std::size_t i = 0; i < kFunctionKeys.size(); ++i) {
        if (kFunctionKeys.at(i) == keyCode)
            return QStringLiteral("F%1").arg(i + 1);
    }
    return std::nullopt;
}

std::optional<QString> KeyCombo::namedKeyName(int keyCode)
{
    const NamedKey* key = namedKey(keyCode);
    if (!key)
        return std::nullopt;
    return text(key->symbol);
}

std::optional<KeyCombo> KeyCombo::fromKeyPress(int keyCode, int modifiers,
                                               const QString& characters)
{
    const bool commanded = modifiers & (controlModifier | optionModifier | commandModifier);
    const std::optional<QString> functionKey = functionKeyName(keyCode);
    if (!commanded && !functionKey)
        return std::nullopt;

    QString key = functionKey.value_or(QString());
    if (key.isEmpty())
        key = namedKeyName(keyCode).value_or(QString());
    if (key.isEmpty())
        key = characters.isEmpty() ? QStringLiteral("?") : characters.toUpper();
    key = key.trimmed();
    if (key.isEmpty())
        return std::nullopt;

    KeyCombo combo{.keyCode = keyCode, .modifiers = 0, .display = {}};
    for (const ModifierName& modifier : kModifiers) {
        if (modifiers & modifier.bit) {
            combo.modifiers |= modifier.bit;
            combo.display += QString::fromUtf8(modifier.symbol);
        }
    }
    combo.display += key;
    return combo;
}

QByteArray KeyCombo::toJson() const
{
    const QJsonObject object{{QStringLiteral("keyCode"), keyCode},
                             {QStringLiteral("modifiers"), modifiers},
                             {QStringLiteral("display"), display}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<KeyCombo> KeyCombo::fromJson(const QByteArray& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const QJsonValue keyCode = object.value(QStringLiteral("keyCode"));
    const QJsonValue modifiers = object.value(QStringLiteral("modifiers"));
    const QJsonValue display = object.value(QStringLiteral("display"));
    const auto whole = [](const QJsonValue& value) {
        return value.isDouble() && value.toDouble() == value.toInt(-1) && value.toInt(-1) >= 0;
    };
    if (!whole(keyCode) || !whole(modifiers) || !display.isString())
        return std::nullopt;
    return KeyCombo{keyCode.toInt(), modifiers.toInt(), display.toString()};
}

QString KeyCombo::shown(KeyNaming naming) const
{
    if (display.isEmpty() || naming == KeyNaming::symbols)
        return display;

    QStringList parts;
    QString key = display;
    for (const ModifierName& modifier : kModifiers) {
        if (modifiers & modifier.bit)
            parts << text(modifier.word);
        if (key.startsWith(QString::fromUtf8(modifier.symbol)))
            key.remove(0, 1);
    }
    if (const NamedKey* named = namedKey(keyCode))
        key = text(named->word);
    parts << key;
    return parts.join(QLatin1Char('+'));
}

} // namespace brindlecam
