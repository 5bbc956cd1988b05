#include "reading/TextFixes.h"

#include <QRegularExpression>

namespace brindlecam {

QString fixedText(const QString& line)
{
    // Spanish has no stressed u between g and e or i: there it is always the dieresis.
    static const QRegularExpression kSmall(QStringLiteral("gú(?=[eiéí])"));
    static const QRegularExpression kCapital(QStringLiteral("GÚ(?=[EIÉÍ])"));
    static const QRegularExpression kNumber(QStringLiteral("\\b([nN])\\.°"));
    QString fixed = line;
    fixed.replace(kSmall, QStringLiteral("gü"));
    fixed.replace(kCapital, QStringLiteral("GÜ"));
    fixed.replace(kNumber, QStringLiteral("\\1.º"));
    return fixed;
}

} // namespace brindlecam
