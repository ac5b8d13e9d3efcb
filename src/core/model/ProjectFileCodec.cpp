#include "core/model/ProjectFileCodec.h"

#include "core/model/JsonReader.h"
#include "core/model/JsonWriter.h"

#include <array>
#include <cmath>

namespace deskmark::ProjectFileCodec {

namespace {

// ---- writing ------------------------------------------------------------------------------

bool writeBookmark(JsonWriter& out, const Bookmark& bookmark) {
    out.raw("{\"id\":");
    out.uuid(bookmark.id);
    out.raw(bookmark.kind == Bookmark::Kind::File ? ",\"kind\":\"file\"" : ",\"kind\":\"url\"");
    out.raw(",\"label\":");
    bool ok = out.string(bookmark.label);
    out.raw(",\"target\":");
    ok = ok && out.string(bookmark.target);
    if (bookmark.group) {
        out.raw(",\"group\":");
        ok = ok && out.string(*bookmark.group);
    }
    if (bookmark.appBundleID) {
        out.raw(",\"appBundleID\":");
        ok = ok && out.string(*bookmark.appBundleID);
    }
    out.raw("}");
    return ok;
}

bool writeProject(JsonWriter& out, const Project& project) {
    out.raw("{\"id\":");
    out.uuid(project.id);
    out.raw(",\"name\":");
    bool ok = out.string(project.name);
    if (project.presetID) {
        out.raw(",\"presetID\":");
        ok = ok && out.string(*project.presetID);
    }
    out.raw(",\"bookmarks\":[");
    for (qsizetype i = 0; ok && i < project.bookmarks.size(); ++i) {
        if (i > 0)
            out.raw(",");
        ok = writeBookmark(out, project.bookmarks[i]);
    }
    out.raw("],\"groups\":[");
    for (qsizetype i = 0; ok && i < project.groups.size(); ++i) {
        if (i > 0)
            out.raw(",");
        ok = out.string(project.groups[i]);
    }
    out.raw("]}");
    return ok;
}

// ---- reading ------------------------------------------------------------------------------
// Each reader consumes one value and fails the JsonReader when the value is not what the
// file format allows there.

// The value of each hex digit, -1 for any other byte.
constexpr std::array<qint8, 256> kHexValue = [] {
    std::array<qint8, 256> table{};
    table.fill(-1);
    for (int i = 0; i < 10; ++i)
        table['0' + i] = qint8(i);
    for (int i = 0; i < 6; ++i)
        table['a' + i] = table['A' + i] = qint8(10 + i);
    return table;
}();

// The canonical text form only, in either case: 8-4-4-4-12 hex digits without braces.
std::optional<QUuid> parseUuid(QByteArrayView text) {
    if (text.size() != 36 || text[8] != '-' || text[13] != '-' || text[18] != '-' ||
        text[23] != '-')
        return std::nullopt;
    static constexpr int kByteOffsets[16] = {0,  2,  4,  6,  9,  11, 14, 16,
                                             19, 21, 24, 26, 28, 30, 32, 34};
    char bytes[16];
    for (int i = 0; i < 16; ++i) {
        const int high = kHexValue[quint8(text[kByteOffsets[i]])];
        const int low = kHexValue[quint8(text[kByteOffsets[i] + 1])];
        if (high < 0 || low < 0)
            return std::nullopt;
        bytes[i] = char(high << 4 | low);
    }
    return QUuid::fromRfc4122(QByteArrayView(bytes, 16));
}

void readUuid(JsonReader& in, QUuid& into) {
    const auto text = in.readStringView();
    const auto uuid = text ? parseUuid(*text) : std::nullopt;
    if (uuid)
        into = *uuid;
    else
        in.fail();
}

void readString(JsonReader& in, QString& into) {
    if (auto text = in.readString())
        into = std::move(*text);
}

// Absent or null means nothing.
void readOptionalString(JsonReader& in, std::optional<QString>& into) {
    if (in.peek() == JsonReader::Type::Null) {
        in.readNull();
        into.reset();
    } else {
        into = in.readString();
    }
}

// A null array reads as an empty one.
template <typename ReadElement> void readOptionalArray(JsonReader& in, ReadElement readElement) {
    if (in.peek() == JsonReader::Type::Null) {
        in.readNull();
        return;
    }
    in.beginArray();
    while (in.nextElement())
        readElement();
}

Bookmark readBookmark(JsonReader& in) {
    Bookmark bookmark;
    bool hasId = false, hasKind = false, hasLabel = false, hasTarget = false;
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        if (key == "id") {
            readUuid(in, bookmark.id);
            hasId = true;
        } else if (key == "kind") {
            // Any other kind makes the whole file unusable.
            const auto text = in.readStringView();
            if (text && *text == "file")
                bookmark.kind = Bookmark::Kind::File;
            else if (text && *text == "url")
                bookmark.kind = Bookmark::Kind::Url;
            else
                in.fail();
            hasKind = true;
        } else if (key == "label") {
            readString(in, bookmark.label);
            hasLabel = true;
        } else if (key == "target") {
            readString(in, bookmark.target);
            hasTarget = true;
        } else if (key == "group") {
            readOptionalString(in, bookmark.group);
        } else if (key == "appBundleID") {
            readOptionalString(in, bookmark.appBundleID);
        } else {
            in.skipValue();
        }
    }
    if (!hasId || !hasKind || !hasLabel || !hasTarget)
        in.fail();
    return bookmark;
}

Project readProject(JsonReader& in) {
    Project project;
    bool hasId = false, hasName = false;
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        if (key == "id") {
            readUuid(in, project.id);
            hasId = true;
        } else if (key == "name") {
            readString(in, project.name);
            hasName = true;
        } else if (key == "presetID") {
            readOptionalString(in, project.presetID);
        } else if (key == "bookmarks") {
            project.bookmarks.clear();
            readOptionalArray(in, [&] { project.bookmarks.append(readBookmark(in)); });
        } else if (key == "groups") {
            project.groups.clear();
            readOptionalArray(in,
                              [&] { project.groups.append(in.readString().value_or(QString())); });
        } else {
            in.skipValue();
        }
    }
    if (!hasId || !hasName)
        in.fail();
    return project;
}

void readAssignments(JsonReader& in, QHash<QString, QUuid>& into) {
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        const QString space = JsonReader::text(key);
        readUuid(in, into[space]);
    }
}

// The two forms of names.json; both fail the reader on an entry of the other form.
void readStyle(JsonReader& in, SpaceStyle& style) {
    bool hasName = false;
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        if (key == "name") {
            readString(in, style.name);
            hasName = true;
        } else if (key == "presetID") {
            readOptionalString(in, style.presetID);
        } else {
            in.skipValue();
        }
    }
    if (!hasName)
        in.fail();
}

void readPlainName(JsonReader& in, SpaceStyle& style) {
    readString(in, style.name);
}

template <typename ReadStyle>
std::optional<QMap<QString, SpaceStyle>> readNames(const QByteArray& data, ReadStyle readStyle) {
    JsonReader in(data);
    QMap<QString, SpaceStyle> styles;
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        SpaceStyle& style = styles[JsonReader::text(key)];
        style = SpaceStyle();
        readStyle(in, style);
    }
    if (!in.atEnd())
        return std::nullopt;
    return styles;
}

} // namespace

QString uuidText(const QUuid& uuid) {
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

std::optional<QByteArray> encode(const Document& document, qsizetype sizeHint) {
    // A little room beyond the previous size covers a typical change without regrowing.
    JsonWriter out(sizeHint + sizeHint / 16);
    out.raw("{\"version\":1,\"projects\":[");
    for (qsizetype i = 0; i < document.projects.size(); ++i) {
        if (i > 0)
            out.raw(",");
        if (!writeProject(out, document.projects[i]))
            return std::nullopt;
    }
    out.raw("],\"assignments\":{");
    for (auto it = document.assignments.cbegin(); it != document.assignments.cend(); ++it) {
        if (it != document.assignments.cbegin())
            out.raw(",");
        if (!out.string(it.key()))
            return std::nullopt;
        out.raw(":");
        out.uuid(it.value());
    }
    out.raw("}}");
    return out.take();
}

std::optional<Document> decode(const QByteArray& data) {
    JsonReader in(data);
    Document document;
    bool hasVersion = false, hasProjects = false, hasAssignments = false;
    QByteArrayView key;
    in.beginObject();
    while (in.nextMember(key)) {
        if (key == "version") {
            // Any whole number that a 64-bit integer holds.
            const auto version = in.readNumber();
            if (!version || std::trunc(*version) != *version || *version < -0x1p63 ||
                *version >= 0x1p63)
                in.fail();
            hasVersion = true;
        } else if (key == "projects") {
            document.projects.clear();
            in.beginArray();
            while (in.nextElement())
                document.projects.append(readProject(in));
            hasProjects = true;
        } else if (key == "assignments") {
            document.assignments.clear();
            readAssignments(in, document.assignments);
            hasAssignments = true;
        } else {
            in.skipValue();
        }
    }
    if (!in.atEnd() || !hasVersion || !hasProjects || !hasAssignments)
        return std::nullopt;
    return document;
}

std::optional<QMap<QString, SpaceStyle>> decodeNames(const QByteArray& data) {
    if (auto styles = readNames(data, readStyle))
        return styles;
    return readNames(data, readPlainName);
}

} // namespace deskmark::ProjectFileCodec
