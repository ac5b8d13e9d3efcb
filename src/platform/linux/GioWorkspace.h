#pragma once

#include "core/bookmarks/Workspace.h"

#include <QObject>

namespace deskmark {

// The desktop's applications through GIO (desktop entries, mimeapps.list defaults,
// launching with a startup id) and the file manager through
// org.freedesktop.FileManager1 on the session bus.
class GioWorkspace : public QObject, public Workspace {
    Q_OBJECT
public:
    using QObject::QObject;

    std::optional<QString> applicationLocation(const QString& appID) const override;
    QString applicationID(const QString& location) const override;
    QString applicationName(const QString& location) const override;
    QString applicationIconName(const QString& location) const override;
    QStringList applicationCommand(const QString& location) const override;
    QString applicationWindowClass(const QString& location) const override;
    QStringList applicationsForType(const QString& mimeType) const override;
    std::optional<QString> defaultApplicationForType(const QString& mimeType) const override;
    std::optional<QString> defaultApplicationForURL(const QUrl& url) const override;
    std::optional<QString> defaultTerminal() const override;
    bool openURL(const QUrl& url) override;
    bool openWithApplication(const QList<QUrl>& urls, const QString& location) override;
    bool openTerminal(const QString& folder, const QString& location) override;
    void revealInFileManager(const QString& path) override;
    Launch startProcess(const QStringList& command) override;

    // The application whose windows carry this WM_CLASS (instance or class name): the entry
    // naming it as StartupWMClass, else the one whose id is the name in lower case.
    std::optional<QString> applicationForWindowClass(const QStringList& names) const;
    // The entry lists "TerminalEmulator" among its categories.
    bool isTerminal(const QString& location) const;

    // How long the file manager may take to answer a reveal before the folder is opened
    // instead.
    static constexpr int revealTimeoutMs = 5000;
};

} // namespace deskmark
