#pragma once

#include "core/app/LoginItem.h"

namespace deskmark {

// The login item on Linux: "deskmark.desktop" in the XDG autostart folder
// ($XDG_CONFIG_HOME/autostart). It is on when the file exists and does not say
// Hidden=true (the way a desktop switches a user's autostart entry off).
class AutostartLoginItem : public LoginItem {
public:
    AutostartLoginItem(QString autostartFolder, QString executablePath);

    QString filePath() const;

    bool isEnabled() const override;
    // Enabling writes the whole entry atomically (replacing one that is switched off);
    // disabling removes the file.
    bool setEnabled(bool enabled, QString* error) override;

    // The entry written for the executable.
    static QByteArray desktopEntry(const QString& executablePath);
    // The Exec value that starts the executable at login: its bare name when the PATH
    // finds this very file under that name (an installed copy, which keeps starting
    // when an update moves it to another folder on the PATH), else its full path (a
    // copy in a build or download folder, which the PATH does not know).
    static QString launchCommand(const QString& executablePath);
    // The Exec value that runs path: quoted when it holds a reserved character, then
    // escaped as a desktop-entry string.
    static QString execValue(const QString& path);

private:
    bool writeEntry(QString* error) const;
    bool removeEntry(QString* error) const;

    QString folder_;
    QString executable_;
};

} // namespace deskmark
