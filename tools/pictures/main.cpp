#include "BarPictures.h"
#include "ChromePictures.h"
#include "DialogPictures.h"
#include "DrawerPictures.h"
#include "IconPictures.h"
#include "MarkPictures.h"
#include "MenuPictures.h"
#include "OverlayPictures.h"
#include "PanelPictures.h"
#include "Photographer.h"
#include "PinPictures.h"
#include "Program.h"
#include "SettingsPictures.h"
#include "UpdatePictures.h"
#include "look/Appearance.h"
#include "look/Catalogues.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/SingleInstance.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>

using namespace brindlecam;

/// Usage: surface_pictures FOLDER plain|blended. The second says whether there is a compositor,
/// which is then waited for. The settings are those of the environment: give it a private one.
int main(int argc, char* argv[])
{
    if (argc != 3)
        qFatal("usage: surface_pictures FOLDER plain|blended");
    QCoreApplication::setApplicationName(QStringLiteral("brindlecam"));
    QCoreApplication::setApplicationVersion(QStringLiteral(BRINDLECAM_VERSION));
    const auto ports = choosePorts();
    if (!ports)
        qFatal("%s", qPrintable(ports.error().message));

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Platform platform = ports.value().make();
    Catalogues catalogues;
    catalogues.install(platform.textCatalogue);
    Appearance::install(platform.interfaceFont);

    QApplication::setCursorFlashTime(0); // or a caret shows only now and then
    // The pointer stands where no window is.
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QCursor::setPos(screen.width() / 2, screen.height() * 95 / 100);

    Defaults defaults(Defaults::standardFile());
    Prefs prefs(defaults);
    pictures::Photographer photographer(platform, QString::fromLocal8Bit(argv[1]));
    const bool blended = QLatin1String(argv[2]) == QLatin1String("blended");
    photographer.await(QStringLiteral("the compositor"),
                       [&] { return platform.compositing->blends() == blended; });
    pictures::takeIconPictures(photographer);
    pictures::takeOverlayPictures(photographer, prefs);
    pictures::takeBarPictures(photographer, prefs);
    pictures::takeMarkPictures(photographer, prefs);
    pictures::takePanelPictures(photographer);
    pictures::takeChromePictures(photographer);
    // The program's own, which has not begun: neither hot keys nor other copies reach it.
    SingleInstance nowhere{InstancePlace()};
    Program program(platform, CaptureFailure::Voice::silent, nowhere);
    pictures::takePinPictures(photographer, program.pinnedCaptures());
    pictures::takeMenuPictures(photographer, program.delegate().menu());
    pictures::takeDialogPictures(photographer, program.delegate(), prefs);
    pictures::takeDrawerPictures(photographer);
    pictures::takeSettingsPictures(photographer);
    pictures::takeUpdatePictures(photographer);
    return 0;
}
