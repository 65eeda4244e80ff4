// SPDX-License-Identifier: GPL-3.0-or-later
// tav: the viewer.
#include "app/Session.h"
#include "core/FileNames.h"
#include "settings/RegistryStore.h"
#include "ui/FaultCatchingApplication.h"
#include "ui/QtMessages.h"
#include "ui/main/MainWindow.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>
#include <memory>

namespace {

// TAV_STARTUP_TIME: once the main window has painted itself after start-up
// (its caption set, the file loaded), print the caption and the time since
// main() began; with the value "quit" the viewer then ends, which is what
// the start-up benchmark times from outside.
class StartupTiming : public QObject {
public:
    StartupTiming(QWidget& window, const QElapsedTimer& sinceStart, bool quitAfter)
        : window_(window), sinceStart_(sinceStart), quitAfter_(quitAfter)
    {
        window_.installEventFilter(this);
        // A message box at start-up may have let the window paint already.
        window_.update();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &window_ && event->type() == QEvent::Paint) {
            window_.removeEventFilter(this);
            // After the paint itself, which this event only announces.
            QTimer::singleShot(0, this, [this] { report(); });
        }
        return false;
    }

private:
    void report()
    {
        std::fprintf(stderr, "tav: caption \"%s\" shown %lld ms after start\n",
                     qPrintable(window_.windowTitle()),
                     static_cast<long long>(sinceStart_.elapsed()));
        std::fflush(stderr);
        if (quitAfter_)
            QCoreApplication::quit();
    }

    QWidget& window_;
    const QElapsedTimer& sinceStart_;
    bool quitAfter_;
};

// --help and --version answer on standard output without opening a window
// (so they work without a display). Any other command line names a file.
bool answeredOption(int argc, char* argv[])
{
    if (argc != 2)
        return false;
    const QByteArray option(argv[1]);
    if (option == "--version") {
        std::printf("tav %s\n", TAV_VERSION);
        return true;
    }
    if (option == "--help" || option == "-h") {
        std::printf("usage: tav [FILE]\n"
                    "Opens the viewer of GEDCOM genealogy files on FILE (a .ged file; quotes\n"
                    "and blanks allowed), or else on the auto-load file of the options.\n"
                    "  --help, -h  this text\n"
                    "  --version   the version of tav\n"
                    "Settings: $XDG_CONFIG_HOME/Wendrake/Tav.reg (~/.config when unset).\n"
                    "See also tav(1) and tav-cli(1).\n");
        return true;
    }
    return false;
}

}  // namespace

int main(int argc, char* argv[])
{
    if (answeredOption(argc, argv))
        return 0;
    QElapsedTimer sinceStart;
    sinceStart.start();
    tav::FaultCatchingApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tav"));
    QApplication::setOrganizationName(QStringLiteral("Wendrake"));
    QApplication::setApplicationVersion(QStringLiteral(TAV_VERSION));
    // Lets the desktop match the windows with the installed menu entry.
    QGuiApplication::setDesktopFileName(QStringLiteral(TAV_APP_ID));

    tav::RegistryStore store;
    for (const QString& problem : store.loadProblems())
        std::fprintf(stderr, "tav: %s\n", qPrintable(problem));
    tav::QtMessages messages;
    app.setMessages(&messages);
    tav::Session session(messages);
    tav::MainWindow window(session, store, QCoreApplication::applicationDirPath());
    // The command line taken whole, as one path: a name with blanks need not
    // be quoted. Its bytes are the file's name, whatever they are (what
    // QApplication took for itself is gone from argv by now).
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words << tav::fileNameFromBytes(argv[i]);
    const QString commandLine = words.join(QLatin1Char(' '));

    // TAV_SCREENSHOT=file.png: save a picture of the main window and quit
    // (the README's run command uses it where there is no display). With
    // nobody to read them, message boxes go to standard error and are
    // answered with OK.
    const QString screenshot = qEnvironmentVariable("TAV_SCREENSHOT");
    QTimer answering;
    if (!screenshot.isEmpty()) {
        QObject::connect(&answering, &QTimer::timeout, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                std::fprintf(stderr, "tav: message: %s\n", qPrintable(box->text()));
                box->accept();
            }
        });
        answering.start(100);
    }
    window.show();
    window.startUp(commandLine);
    std::unique_ptr<StartupTiming> timing;
    if (qEnvironmentVariableIsSet("TAV_STARTUP_TIME"))
        timing = std::make_unique<StartupTiming>(
            window, sinceStart, qEnvironmentVariable("TAV_STARTUP_TIME") == QLatin1String("quit"));
    if (!screenshot.isEmpty()) {
        QTimer::singleShot(300, &window, [&window, screenshot] {
            const bool saved = window.grab().save(screenshot);
            std::fprintf(stderr,
                         saved ? "tav: main window saved to %s\n" : "tav: cannot write %s\n",
                         qPrintable(screenshot));
            window.close();
        });
    }
    return app.exec();
}
