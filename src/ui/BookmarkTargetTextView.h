#pragma once

#include <QPlainTextEdit>

namespace deskmark {

// The form's "URL / Path" field: several lines tall so that a long address stays
// readable, but Return (and Enter) submits instead of starting a new line.
class BookmarkTargetTextView : public QPlainTextEdit {
    Q_OBJECT
public:
    using QPlainTextEdit::QPlainTextEdit;

Q_SIGNALS:
    void submitted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace deskmark
