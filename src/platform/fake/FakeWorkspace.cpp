#include "platform/fake/FakeWorkspace.h"

namespace deskmark {

QString FakeWorkspace::addApplication(const Application& application) {
    const QString location = QStringLiteral("/apps/") + application.id + QStringLiteral(".desktop");
    addApplicationCopy(location, application);
    return location;
}

void FakeWorkspace::addApplicationCopy(const QString& location, const Application& application) {
    applications_[location] = application;
    order_ << location;
}

std::optional<QString> FakeWorkspace::applicationLocation(const QString& appID) const {
    for (const QString& location : order_) {
        if (applications_[location].id == appID)
            return location;
    }
    return std::nullopt;
}

QString FakeWorkspace::applicationID(const QString& location) const {
    return applications_.value(location).id;
}

QString FakeWorkspace::applicationName(const QString& location) const {
    return applications_.value(location).name;
}

QString FakeWorkspace::applicationIconName(const QString& location) const {
    return applications_.value(location).iconName;
}

QStringList FakeWorkspace::applicationCommand(const QString& location) const {
    return applications_.value(location).command;
}

QString FakeWorkspace::applicationWindowClass(const QString& location) const {
    return applications_.value(location).windowClass;
}

QStringList FakeWorkspace::applicationsForType(const QString& mimeType) const {
    QStringList result;
    for (const QString& location : order_) {
        if (applications_[location].mimeTypes.contains(mimeType))
            result << location;
    }
    return result;
}

std::optional<QString> FakeWorkspace::defaultApplicationForType(const QString& mimeType) const {
    if (!defaults_.contains(mimeType))
        return std::nullopt;
    return defaults_.value(mimeType);
}

std::optional<QString> FakeWorkspace::defaultApplicationForURL(const QUrl& url) const {
    return defaultApplicationForType(QStringLiteral("x-scheme-handler/") + url.scheme());
}

bool FakeWorkspace::openURL(const QUrl& url) {
    calls << QStringLiteral("openURL ") + url.toString();
    return openURLResult_;
}

bool FakeWorkspace::openWithApplication(const QList<QUrl>& urls, const QString& location) {
    QStringList texts;
    for (const QUrl& url : urls)
        texts << url.toString();
    calls << QStringLiteral("open ") + texts.join(u' ') + QStringLiteral(" with ") + location;
    return true;
}

bool FakeWorkspace::openTerminal(const QString& folder, const QString& location) {
    calls << QStringLiteral("terminal ") + folder + QStringLiteral(" with ") + location;
    return true;
}

void FakeWorkspace::revealInFileManager(const QString& path) {
    calls << QStringLiteral("reveal ") + path;
}

Workspace::Launch FakeWorkspace::startProcess(const QStringList& command) {
    calls << QStringLiteral("start ") + command.join(u' ');
    if (startErrors_.contains(command.value(0)))
        return {false, {}, startErrors_.value(command.value(0))};
    return {true, QStringLiteral("fake-launch-%1").arg(++launches_), {}};
}

void FakeWorkspace::addWindow(const QString& windowClass, const Window& window) {
    windows_.append({windowClass, window});
}

QList<WindowMover::Window> FakeWorkspace::windows(const QString& windowClass) const {
    QList<Window> result;
    for (const auto& [owner, window] : windows_) {
        if (owner.compare(windowClass, Qt::CaseInsensitive) == 0)
            result << window;
    }
    return result;
}

void FakeWorkspace::moveWindow(quint64 window, QPointF topLeft) {
    calls << QStringLiteral("move %1 to %2,%3").arg(window).arg(topLeft.x()).arg(topLeft.y());
}

std::optional<CaptureSource::Page> FakeWorkspace::browserPage(const RunningApp& app) {
    calls << QStringLiteral("page of ") + app.bundleID;
    return page;
}

std::optional<QString> FakeWorkspace::fileManagerLocation(const RunningApp& app) {
    calls << QStringLiteral("location of ") + app.bundleID;
    return location;
}

std::optional<QString> FakeWorkspace::terminalFolder(const RunningApp& app) {
    calls << QStringLiteral("folder of ") + app.bundleID;
    return location;
}

} // namespace deskmark
