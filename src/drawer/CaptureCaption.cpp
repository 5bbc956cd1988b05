#include "drawer/CaptureCaption.h"

#include "base/Text.h"

namespace brindlecam::CaptureCaption {

namespace {

/// The first letter of each word in upper case, the others as they are.
QString capitalised(QString words)
{
    bool inWord = false;
    for (QChar& letter : words) {
        if (!inWord)
            letter = letter.toUpper();
        inWord = letter.isLetter();
    }
    return words;
}

} // namespace

QString when(const QDateTime& time, const QDateTime& now, const QLocale& locale)
{
    const qint64 days = time.date().daysTo(now.date());
    QString day = locale.toString(time.date(), QLocale::ShortFormat);
    if (days == 0)
        day = text("Hoy");
    else if (days == 1)
        day = text("Ayer");
    return capitalised(day + QStringLiteral(", ") +
                       locale.toString(time.time(), QLocale::ShortFormat));
}

QString of(const QString& path, const QString& when, QSize pixels)
{
    const QString between = QStringLiteral("  ·  ");
    QString caption = when;
    if (path.endsWith(QStringLiteral(".gif")))
        caption.prepend(QStringLiteral("GIF") + between);
    if (!pixels.isEmpty())
        caption += between + QStringLiteral("%1×%2").arg(pixels.width()).arg(pixels.height());
    return caption;
}

QLocale locale()
{
    const QLocale system;
    return system.language() == QLocale::C ? QLocale(QLocale::Spanish) : system;
}

} // namespace brindlecam::CaptureCaption
