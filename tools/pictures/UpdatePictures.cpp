#include "UpdatePictures.h"

#include "OpenDialog.h"
#include "Photographer.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "platform/Platform.h"
#include "platform/null/NullPlatform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/ReleaseFeed.h"
#include "settings/Updater.h"

#include <QDialog>
#include <QMetaObject>
#include <QTemporaryDir>

namespace brindlecam::pictures {

namespace {

/// Answers with what it is told to.
class ToldFeed final : public ReleaseFeed {
public:
    [[nodiscard]] bool exists() const override { return true; }
    void fetch(QObject* context, std::function<void(std::optional<QByteArray>)> done) override
    {
        QMetaObject::invokeMethod(
            context, [done = std::move(done), answer = answer] { done(answer); },
            Qt::QueuedConnection);
    }

    std::optional<QByteArray> answer;
};

QByteArray announced(const QByteArray& version, const QByteArray& notes)
{
    return R"({"version": ")" + version +
           R"(", "url": "https://brindlecam.example/descarga/linux", "notes": {"es": ")" + notes +
           R"("}})";
}

const QByteArray kNotes = "El cajón de capturas recientes se abre antes.\\n"
                          "El marcador recuerda su opacidad.";
const QByteArray kNoteLine = "Una línea de novedades que dice con muchas palabras qué ha cambiado "
                             "en la versión nueva.\\n";

} // namespace

void takeUpdatePictures(Photographer& photographer)
{
    QTemporaryDir folder;
    Defaults defaults(folder.filePath(QStringLiteral("settings.json")));
    const Prefs prefs(defaults);
    Alerts alerts(*photographer.platform().panels);
    const Platform nothing = makeNullPlatform(); // on which no page can be opened
    const Activity activity;
    ToldFeed feed;
    Updater updater({prefs, alerts, *nothing.fileOpener, activity, feed});
    const auto take = [&](const char* name, const std::optional<QByteArray>& answer) {
        feed.answer = answer;
        updater.check(Updater::Asker::user);
        takeOpenDialog(photographer, name);
    };
    take("update-failed", std::nullopt);
    take("update-none", announced(Updater::installedVersion().toLatin1(), ""));
    take("update-offer-without-notes", announced("99.0", ""));
    take("update-offer", announced("99.0", kNotes));
    take("update-offer-long", announced("99.0", kNoteLine.repeated(20)));
    updater.openDownload();
    takeOpenDialog(photographer, "update-no-browser");
}

} // namespace brindlecam::pictures
