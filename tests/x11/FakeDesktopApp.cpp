// A stand-in for desktop applications in the opener tests. Every start appends one JSON
// line to the file named by DESKMARK_FAKE_APP_LOG: its arguments, working folder and
// startup id. With --window it shows a window until it is killed (a browser's new
// window; --maximized shows it maximized); otherwise it exits at once.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QWidget>

int main(int argc, char** argv) {
    const QByteArray startupID = qgetenv("DESKTOP_STARTUP_ID");
    QApplication app(argc, argv);
    QStringList arguments = app.arguments().mid(1);
    {
        QFile log(qEnvironmentVariable("DESKMARK_FAKE_APP_LOG"));
        if (log.open(QIODevice::Append)) {
            const QJsonObject line{{"args", QJsonArray::fromStringList(arguments)},
                                   {"cwd", QDir::currentPath()},
                                   {"startupID", QString::fromUtf8(startupID)}};
            log.write(QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
        }
    }
    if (!arguments.contains("--window"))
        return 0;
    QWidget window;
    window.setWindowTitle(arguments.value(arguments.size() - 1));
    window.resize(500, 300);
    if (arguments.contains("--maximized"))
        window.showMaximized();
    else
        window.show();
    return app.exec();
}
