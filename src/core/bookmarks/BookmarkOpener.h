#pragma once

#include "core/bookmarks/CandidateApp.h"
#include "core/bookmarks/CaptureResult.h"
#include "core/bookmarks/RunningApp.h"
#include "core/model/Bookmark.h"
#include "core/overlay/ScreenInfo.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

namespace deskmark {

class CaptureSource;
class Scheduler;
class WindowMover;
class Workspace;

// Turns bookmarks into actions on the desktop: open an address or a path the ordinary
// way, in a terminal, an editor or any application, a new browser window moved to a given
// screen; captures what the active application shows; parses typed entries and derives
// the texts shown for a bookmark. All operations are static and run on the main thread;
// the desktop services are those installed with install().
class BookmarkOpener {
public:
    // The services the opener works through; they must outlive every call.
    static void install(Workspace& workspace, WindowMover& windows, CaptureSource& capture,
                        Scheduler& scheduler);

    // The fixed tables, identifiers in lower case (Linux desktop-file ids beside the
    // macOS bundle identifiers).
    static const QSet<QString>& chromiumFamily();
    static const QSet<QString>& firefoxFamily();
    static const QSet<QString>& fileManagerFamily();
    static const QList<CandidateApp>& terminalTable();
    static const QList<CandidateApp>& editorTable();

    // The expanded path of a file bookmark; none for an address or an empty expansion.
    static std::optional<QString> fileURL(const Bookmark& bookmark);
    static bool isPlainDirectory(const Bookmark& bookmark);
    // The branch (or short commit) checked out in a folder bookmark.
    static std::optional<QString> gitBranch(const Bookmark& bookmark);

    static bool open(const Bookmark& bookmark);
    // Location of the application the bookmark names in appBundleID, when installed.
    static std::optional<QString> appURL(const Bookmark& bookmark);
    static bool openInTerminal(const Bookmark& bookmark, const QString& bundleID);
    static bool openInEditor(const Bookmark& bookmark, const QString& bundleID);
    static bool openInApp(const Bookmark& bookmark, const QString& appURL);
    // Opens the address in a new browser window and, when onScreen is given, moves that
    // window to the screen once it appears.
    static bool openURLInNewWindow(const Bookmark& bookmark,
                                   const std::optional<ScreenInfo>& onScreen);

    // The application active now: the popup keeps it as the source of a later capture.
    static std::optional<RunningApp> frontmostApp();
    static CaptureResult captureFrontmost(const std::optional<RunningApp>& app);

    static std::optional<Bookmark> parseManualEntry(const QString& text);
    static std::optional<QUrl> normalizedURL(const QString& text);
    static bool hasScheme(const QString& text);

    static QList<CandidateApp> installedEditors();
    static QList<CandidateApp> installedTerminals();

    static QString displayTarget(const Bookmark& bookmark);
    static QString displayLabel(const Bookmark& bookmark);
    static QString appName(const QString& appURL);
    static QString appDisplayName(const QString& bundleID);
    // The icon name of the application at a location, for QIcon::fromTheme; may be empty.
    static QString appIconName(const QString& appURL);
    // The id of the application at a location (what appBundleID stores); empty for none.
    static QString appID(const QString& appURL);

    // Where a window goes when it is moved to screen: none when its centre already lies on
    // that screen, else the top-left corner that centres it in the screen's visible frame.
    static std::optional<QPointF> relocatedTopLeft(const QRectF& frame, const ScreenInfo& screen);
};

} // namespace deskmark
