#pragma once

#include "ui/settings/SettingsContext.h"

#include <QWidget>

namespace deskmark {

// A project's bookmarks and groups, the applications bookmarks open with, and the
// popup's options.
class BookmarksPane : public QWidget {
    Q_OBJECT
public:
    explicit BookmarksPane(const SettingsContext& context, QWidget* parent = nullptr);
};

} // namespace deskmark
