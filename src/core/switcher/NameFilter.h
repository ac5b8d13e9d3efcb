#pragma once

#include <QString>

#include <memory>

namespace deskmark {

// Whether a name contains what the user typed, the way a reader compares text in the
// user's language: letter case, full-width and half-width forms, and hiragana and
// katakana do not count ("ｄｅｖ" and "DEV" are found in "dev-server", "かいぎ" in "カイギ");
// accents and voicing marks do. An empty query is found everywhere.
class NameFilter {
public:
    // For the language of the given locale name ("ja_JP", "en_US"); the default is the
    // system locale's.
    explicit NameFilter(const QString& localeName = {});
    ~NameFilter();
    NameFilter(const NameFilter&) = delete;
    NameFilter& operator=(const NameFilter&) = delete;

    bool contains(const QString& name, const QString& query) const;

private:
    struct Collator;
    std::unique_ptr<Collator> collator_;
};

} // namespace deskmark
