#include "ui/BookmarkTargetTextView.h"

#include <QKeyEvent>

namespace deskmark {

void BookmarkTargetTextView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Q_EMIT submitted();
        return;
    }
    // Tab moves on to the next field rather than typing a tab.
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        event->ignore();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

} // namespace deskmark
