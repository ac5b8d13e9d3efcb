// The opener's text work: typed entries, addresses, git branches and the texts shown for
// a bookmark. None of it touches the desktop.
#include "core/bookmarks/BookmarkOpener.h"

#include "core/model/HomePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace deskmark {

namespace {

Bookmark newBookmark(Bookmark::Kind kind, const QString& target) {
    return Bookmark{QUuid::createUuid(), kind, QString(), target, std::nullopt, std::nullopt};
}

std::optional<QString> readTrimmed(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return QString::fromUtf8(file.readAll()).trimmed();
}

bool isHexadecimal(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
    });
}

} // namespace

bool BookmarkOpener::hasScheme(const QString& text) {
    const qsizetype colon = text.indexOf(u':');
    if (colon <= 0)
        return false;
    auto isAsciiLetter = [](QChar c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); };
    if (!isAsciiLetter(text[0]))
        return false;
    for (qsizetype i = 0; i < colon; ++i) {
        const QChar c = text[i];
        if (!isAsciiLetter(c) && !(c >= u'0' && c <= u'9') && c != u'+' && c != u'-' && c != u'.')
            return false;
    }
    return true;
}

std::optional<QUrl> BookmarkOpener::normalizedURL(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    if (hasScheme(trimmed)) {
        const QUrl url(trimmed);
        return url.isValid() ? std::optional(url) : std::nullopt;
    }
    const QUrl url(QStringLiteral("https://") + trimmed);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

std::optional<Bookmark> BookmarkOpener::parseManualEntry(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return std::nullopt;
    if (trimmed.startsWith(u'/') || trimmed.startsWith(u'~'))
        return newBookmark(Bookmark::Kind::File, trimmed);
    const std::optional<QUrl> url = normalizedURL(trimmed);
    if (!url)
        return std::nullopt;
    if (url->scheme() == QLatin1String("file"))
        return newBookmark(Bookmark::Kind::File, url->path());
    return newBookmark(Bookmark::Kind::Url, url->toString());
}

std::optional<QString> BookmarkOpener::gitBranch(const Bookmark& bookmark) {
    const std::optional<QString> folder = fileURL(bookmark);
    if (!folder || !QFileInfo(*folder).isDir())
        return std::nullopt;
    const QFileInfo dotGit(QDir(*folder).filePath(QStringLiteral(".git")));
    QString gitDir;
    if (dotGit.isDir()) {
        gitDir = dotGit.filePath();
    } else if (dotGit.isFile()) {
        // A linked work tree or a submodule: the file names the git directory.
        const std::optional<QString> link = readTrimmed(dotGit.filePath());
        if (!link || !link->startsWith(QLatin1String("gitdir:")))
            return std::nullopt;
        const QString named = link->mid(7).trimmed();
        gitDir = named.startsWith(u'/') ? named : QDir(*folder).filePath(named);
    } else {
        return std::nullopt;
    }
    const std::optional<QString> head = readTrimmed(QDir(gitDir).filePath(QStringLiteral("HEAD")));
    if (!head)
        return std::nullopt;
    if (head->startsWith(QLatin1String("ref: "))) {
        const QString ref = head->mid(5);
        if (ref.startsWith(QLatin1String("refs/heads/")))
            return ref.mid(11);
        return ref;
    }
    // A detached head: the commit, shortened.
    if (head->size() < 7 || !isHexadecimal(*head))
        return std::nullopt;
    return head->left(7);
}

QString BookmarkOpener::displayLabel(const Bookmark& bookmark) {
    if (!bookmark.label.isEmpty())
        return bookmark.label;
    if (bookmark.kind == Bookmark::Kind::File) {
        QString path = expandTilde(bookmark.target);
        while (path.size() > 1 && path.endsWith(u'/'))
            path.chop(1);
        const QString name = QFileInfo(path).fileName();
        return name.isEmpty() ? bookmark.target : name;
    }
    const QUrl url(bookmark.target);
    if (!url.isValid() || url.host().isEmpty())
        return bookmark.target;
    QString text = url.host() + url.path();
    if (text.size() > 1 && text.endsWith(u'/'))
        text.chop(1);
    return text;
}

QString BookmarkOpener::displayTarget(const Bookmark& bookmark) {
    if (bookmark.kind == Bookmark::Kind::Url)
        return bookmark.target;
    return abbreviateWithTilde(expandTilde(bookmark.target));
}

} // namespace deskmark
