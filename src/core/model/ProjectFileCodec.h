#pragma once

#include "core/model/Project.h"
#include "core/model/SpaceStyle.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>
#include <QUuid>

#include <optional>

namespace deskmark {

// The JSON form of projects.json and of the legacy names.json.
//
// projects.json is one object with "version" (always written as 1, never examined),
// "projects" (the project objects in order) and "assignments" (Space UUID to project
// id). All three are required; so are a project's "id" and "name" and a bookmark's
// "id", "kind", "label" and "target". A required key that is missing, a value of the
// wrong type, a text that is not a UUID where one is expected or a bookmark kind other
// than "file" and "url" makes the whole file undecodable. Optional keys may be absent
// or null. UUIDs are written upper case without braces.
namespace ProjectFileCodec {

struct Document {
    QList<Project> projects;
    QHash<QString, QUuid> assignments;
};

// Nothing when the text cannot be represented as JSON (a string holding a lone UTF-16
// surrogate). sizeHint, the size of the previous text, spares growing the buffer.
std::optional<QByteArray> encode(const Document& document, qsizetype sizeHint = 0);
std::optional<Document> decode(const QByteArray& data);

// The legacy names.json: an object from Space UUID to either {"name", "presetID"?}
// (the newer form) or a plain name (the oldest form). Every entry must have the same
// form. Nothing when neither form fits.
std::optional<QMap<QString, SpaceStyle>> decodeNames(const QByteArray& data);

QString uuidText(const QUuid& uuid);

} // namespace ProjectFileCodec

} // namespace deskmark
