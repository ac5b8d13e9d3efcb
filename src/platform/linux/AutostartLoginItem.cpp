#include "platform/linux/AutostartLoginItem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace deskmark {

namespace {
// True when the [Desktop Entry] group sets Hidden=true.
bool isHidden(const QByteArray& entry) {
    bool inMainGroup = false;
    for (const QByteArray& rawLine : entry.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        if (line.startsWith('[')) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (!inMainGroup || equals < 0)
            continue;
        if (line.left(equals).trimmed() == "Hidden" && line.mid(equals + 1).trimmed() == "true")
            return true;
    }
    return false;
}
} // namespace

AutostartLoginItem::AutostartLoginItem(QString autostartFolder, QString executablePath)
    : folder_(std::move(autostartFolder)), executable_(std::move(executablePath)) {}

QString AutostartLoginItem::filePath() const {
    return folder_ + QStringLiteral("/deskmark.desktop");
}

bool AutostartLoginItem::isEnabled() const {
    QFile file(filePath());
    if (!QFileInfo(file).isFile())
        return false;
    // An entry that exists but cannot be read is still started by the session.
    return !file.open(QIODevice::ReadOnly) || !isHidden(file.readAll());
}

bool AutostartLoginItem::setEnabled(bool enabled, QString* error) {
    return enabled ? writeEntry(error) : removeEntry(error);
}

bool AutostartLoginItem::writeEntry(QString* error) const {
    if (!QDir().mkpath(folder_)) {
        *error = QStringLiteral("cannot create the folder ") + folder_;
        return false;
    }
    QSaveFile file(filePath());
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    const QByteArray entry = desktopEntry(executable_);
    if (file.write(entry) != entry.size() || !file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

bool AutostartLoginItem::removeEntry(QString* error) const {
    QFile file(filePath());
    if (!file.exists() || file.remove())
        return true;
    *error = file.errorString();
    return false;
}

QByteArray AutostartLoginItem::desktopEntry(const QString& executablePath) {
    return QByteArrayLiteral("[Desktop Entry]\n"
                             "Type=Application\n"
                             "Name=Deskmark\n"
                             "Comment=Name your virtual desktops and switch between them by name\n"
                             "Comment[ja]=仮想デスクトップに名前を付け、名前で切り替える\n"
                             "Icon=io.github.deskmark.Deskmark\n"
                             "Exec=") +
           launchCommand(executablePath).toUtf8() +
           QByteArrayLiteral("\n"
                             "Terminal=false\n"
                             "X-GNOME-Autostart-enabled=true\n");
}

QString AutostartLoginItem::launchCommand(const QString& executablePath) {
    const QFileInfo executable(executablePath);
    const QString onPath = QStandardPaths::findExecutable(executable.fileName());
    if (!onPath.isEmpty() && executable.exists() &&
        QFileInfo(onPath).canonicalFilePath() == executable.canonicalFilePath())
        return execValue(executable.fileName());
    return execValue(executablePath);
}

QString AutostartLoginItem::execValue(const QString& path) {
    // Exec level: '%' starts a field code, so it is doubled; an argument with a
    // reserved character goes in double quotes, where '"', '`', '$' and '\' take a
    // backslash.
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    QString argument;
    bool quote = false;
    for (const QChar c : path) {
        if (reserved.contains(c))
            quote = true;
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') ||
            c == QLatin1Char('\\'))
            argument += QLatin1Char('\\');
        argument += c;
        if (c == QLatin1Char('%'))
            argument += c;
    }
    if (quote)
        argument = QLatin1Char('"') + argument + QLatin1Char('"');
    // String level, undone by the reader first: backslashes and control characters.
    QString value;
    for (const QChar c : argument) {
        if (c == QLatin1Char('\\'))
            value += QStringLiteral("\\\\");
        else if (c == QLatin1Char('\n'))
            value += QStringLiteral("\\n");
        else if (c == QLatin1Char('\t'))
            value += QStringLiteral("\\t");
        else if (c == QLatin1Char('\r'))
            value += QStringLiteral("\\r");
        else
            value += c;
    }
    return value;
}

} // namespace deskmark
