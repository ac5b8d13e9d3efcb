#include "ui/BookmarkPopupView.h"

#include "core/app/Language.h"
#include "core/bookmarks/BookmarkPopupGeometry.h"
#include "core/model/SettingsStore.h"
#include "ui/BookmarkListModel.h"
#include "ui/BookmarkRowDelegate.h"
#include "ui/ThemedIcon.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

namespace deskmark {

namespace {
// Local files and folders among dropped items.
QStringList droppedPaths(const QMimeData* data) {
    QStringList paths;
    if (!data || !data->hasUrls())
        return paths;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    return paths;
}

QToolButton* footerButton(QWidget* parent, const QIcon& icon, const QString& help) {
    auto* button = new QToolButton(parent);
    button->setIcon(icon);
    button->setToolTip(help);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}
} // namespace

BookmarkPopupView::BookmarkPopupView(BookmarkPopupModel& model, SettingsStore& settings,
                                     QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      model_(model),
      settings_(settings),
      listModel_(new BookmarkListModel(model, this)),
      delegate_(new BookmarkRowDelegate(model, this)),
      title_(new QLabel(this)),
      list_(new QListView(this)),
      emptyTitle_(new QLabel(this)),
      emptyMessage_(new QLabel(this)),
      banner_(new QLabel(this)),
      hints_(new QLabel(this)),
      hintToggle_(new QPushButton(this)),
      pin_(nullptr) {
    setWindowTitle(localized("ブックマーク", "Bookmarks"));
    setObjectName(QStringLiteral("Deskmark.bookmarkPopup"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);

    list_->setModel(listModel_);
    list_->setItemDelegate(delegate_);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setMouseTracking(true);
    list_->setUniformItemSizes(false);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->viewport()->installEventFilter(this);
    list_->viewport()->setAttribute(Qt::WA_Hover);

    emptyTitle_->setAlignment(Qt::AlignCenter);
    emptyMessage_->setAlignment(Qt::AlignCenter);
    emptyMessage_->setWordWrap(true);
    hints_->setWordWrap(true);
    hints_->setTextFormat(Qt::RichText);

    auto* add = footerButton(this, ThemedIcon::get("list-add", QStyle::SP_FileDialogNewFolder),
                             localized("ブックマークを追加（Alt+N）", "Add Bookmark (Alt+N)"));
    auto* addFiles = footerButton(this, ThemedIcon::get("document-open", QStyle::SP_DialogOpenButton),
                                  localized("ファイルを追加…", "Add Files…"));
    auto* newGroup = footerButton(this, ThemedIcon::get("folder-new", QStyle::SP_FileDialogNewFolder),
                                  localized("新しいグループ…（Shift+Alt+N）",
                                            "New Group… (Shift+Alt+N)"));
    auto* capture = footerButton(this, ThemedIcon::get("insert-link", QStyle::SP_BrowserReload),
                                 localized("今見ているものを追加（Alt+C）", "Capture (Alt+C)"));
    pin_ = footerButton(this, ThemedIcon::get("window-pin", QStyle::SP_TitleBarShadeButton),
                        localized("ピン留めすると開いたままになり、ファイルマネージャから項目を"
                                  "ドラッグできます（Esc で閉じます）",
                                  "Pin to keep the popup open so you can drag items in from the "
                                  "file manager (Esc closes)"));
    pin_->setCheckable(true);
    hintToggle_->setFlat(true);
    hintToggle_->setFocusPolicy(Qt::NoFocus);
    connect(add, &QToolButton::clicked, this, [this] { model_.handleKey(Qt::Key_N, Qt::AltModifier); });
    connect(addFiles, &QToolButton::clicked, this, &BookmarkPopupView::addFilesRequested);
    connect(newGroup, &QToolButton::clicked, this, [this] { model_.promptNewGroup(); });
    connect(capture, &QToolButton::clicked, this, [this] { model_.captureFrontmost(); });
    connect(pin_, &QToolButton::toggled, this, &BookmarkPopupView::pinnedChanged);
    connect(hintToggle_, &QPushButton::clicked, this,
            [this] { settings_.setBookmarkHintVisible(!settings_.bookmarkHintVisible()); });

    auto* footer = new QHBoxLayout;
    footer->setSpacing(2);
    for (QWidget* button : {static_cast<QWidget*>(add), static_cast<QWidget*>(addFiles),
                            static_cast<QWidget*>(newGroup)})
        footer->addWidget(button);
    footer->addStretch();
    footer->addWidget(hintToggle_);
    footer->addWidget(capture);
    footer->addWidget(pin_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 6);
    layout->setSpacing(4);
    layout->addWidget(title_);
    layout->addWidget(list_);
    layout->addWidget(emptyTitle_);
    layout->addWidget(emptyMessage_);
    layout->addWidget(banner_);
    layout->addWidget(hints_);
    layout->addLayout(footer);

    connect(&model_, &BookmarkPopupModel::changed, this, &BookmarkPopupView::renderList);
    connect(&model_, &BookmarkPopupModel::selectionChanged, this, &BookmarkPopupView::renderSelection);
    connect(&model_, &BookmarkPopupModel::bannerChanged, this, &BookmarkPopupView::renderBanner);
    connect(&settings_, &SettingsStore::bookmarkHintVisibleChanged, this, [this] {
        renderHints();
        Q_EMIT contentResized();
    });
    applyScale();
    renderList();
    renderBanner();
}

bool BookmarkPopupView::pinned() const { return pin_->isChecked(); }

QPoint BookmarkPopupView::menuPosition(int row) const {
    const QRect rect = list_->visualRect(listModel_->index(listModel_->entryOfRow(row)));
    return list_->viewport()->mapToGlobal(rect.bottomLeft() + QPoint(rect.height(), 0));
}

void BookmarkPopupView::applyScale() {
    const double s = model_.scale();
    delegate_->setLook({s, settings_.bookmarkShowLabel(), settings_.bookmarkShowTarget()});
    title_->setFont(BookmarkRowDelegate::scaledFont(13, s, true));
    emptyTitle_->setFont(BookmarkRowDelegate::scaledFont(15, s, true));
    emptyMessage_->setFont(BookmarkRowDelegate::scaledFont(12, s));
    banner_->setFont(BookmarkRowDelegate::scaledFont(12, s));
    hints_->setFont(BookmarkRowDelegate::scaledFont(11, s));
    hintToggle_->setFont(BookmarkRowDelegate::scaledFont(11, s));
}

void BookmarkPopupView::layOut(double width, double maxListHeight) {
    applyScale();
    const BookmarkRowDelegate::Look look = delegate_->look();
    const double listHeight = BookmarkPopupGeometry::listHeight(
        int(model_.rows().size()), model_.headerCount(), look.scale, look.showLabel,
        look.showTarget, maxListHeight);
    list_->setFixedHeight(qRound(listHeight));
    list_->doItemsLayout();
    setFixedWidth(qRound(width));
    layout()->activate();
    setFixedHeight(layout()->totalHeightForWidth(qRound(width)));
}

void BookmarkPopupView::renderList() {
    const std::optional<Project>& project = model_.project();
    title_->setText(project ? project->name : localized("ブックマーク", "Bookmarks"));
    const bool empty = model_.rows().isEmpty();
    list_->setVisible(!empty);
    emptyTitle_->setText(model_.emptyTitle());
    emptyTitle_->setVisible(!model_.emptyTitle().isEmpty());
    emptyMessage_->setText(model_.emptyMessage());
    emptyMessage_->setVisible(empty);
    renderSelection();
}

void BookmarkPopupView::renderSelection() {
    const int entry = listModel_->entryOfRow(model_.selection());
    if (entry >= 0)
        list_->scrollTo(listModel_->index(entry), QAbstractItemView::EnsureVisible);
    list_->viewport()->update();
    renderHints();
    Q_EMIT contentResized();
}

void BookmarkPopupView::renderBanner() {
    const auto& banner = model_.banner();
    banner_->setVisible(banner.has_value());
    if (banner)
        banner_->setText((banner->copied ? QStringLiteral("📋 ") : QStringLiteral("⚠ ")) + banner->text);
    Q_EMIT contentResized();
}

void BookmarkPopupView::renderHints() {
    const bool visible = settings_.bookmarkHintVisible();
    hintToggle_->setText(visible ? localized("キーのヒントを隠す", "Hide key hints")
                                 : localized("キーのヒントを表示", "Show key hints"));
    hints_->setVisible(visible);
    if (!visible)
        return;
    const QString badge = palette().color(QPalette::Midlight).name();
    QStringList parts;
    for (const BookmarkHint& hint : model_.hints()) {
        const QString text = hint.text.toHtmlEscaped();
        parts << (hint.keys.isEmpty()
                      ? QStringLiteral("<nobr><b>%1</b></nobr>").arg(text)
                      : QStringLiteral("<nobr><span style='background-color:%1;'>&nbsp;%2&nbsp;</span>"
                                       "&nbsp;%3</nobr>")
                            .arg(badge, hint.keys.toHtmlEscaped(), text));
    }
    hints_->setText(parts.join(QStringLiteral("&nbsp;&nbsp;&nbsp; ")));
}

void BookmarkPopupView::keyPressEvent(QKeyEvent* event) {
    if (!model_.handleKey(event->key(), event->modifiers()))
        QWidget::keyPressEvent(event);
}

void BookmarkPopupView::setDropTargeted(bool on) {
    if (dropTargeted_ == on)
        return;
    dropTargeted_ = on;
    update();
}

void BookmarkPopupView::dragEnterEvent(QDragEnterEvent* event) {
    if (droppedPaths(event->mimeData()).isEmpty())
        return;
    event->acceptProposedAction();
    setDropTargeted(true);
}

void BookmarkPopupView::dragLeaveEvent(QDragLeaveEvent*) { setDropTargeted(false); }

void BookmarkPopupView::dropEvent(QDropEvent* event) {
    setDropTargeted(false);
    const QStringList paths = droppedPaths(event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    model_.addFiles(paths);
}

void BookmarkPopupView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    QColor edge = dropTargeted_ ? palette().color(QPalette::Highlight) : palette().color(QPalette::Mid);
    painter.setPen(QPen(edge, dropTargeted_ ? 3 : 1));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

bool BookmarkPopupView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == list_->viewport()) {
        if (event->type() == QEvent::ToolTip) {
            auto* help = static_cast<QHelpEvent*>(event);
            const QModelIndex index = list_->indexAt(help->pos());
            const QRect rect = list_->visualRect(index);
            if (index.data(BookmarkListModel::IsHeaderRole).toBool()) {
                const bool up = delegate_->headerButton(rect, true).contains(help->pos());
                if (up || delegate_->headerButton(rect, false).contains(help->pos())) {
                    QToolTip::showText(help->globalPos(),
                                       up ? localized("グループを上へ移動（Shift+Alt+↑）",
                                                      "Move Group Up (Shift+Alt+↑)")
                                          : localized("グループを下へ移動（Shift+Alt+↓）",
                                                      "Move Group Down (Shift+Alt+↓)"),
                                       list_->viewport());
                    return true;
                }
            }
        }
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            listClicked(mouse->position().toPoint(), mouse->button(),
                        event->type() == QEvent::MouseButtonDblClick);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void BookmarkPopupView::listClicked(const QPoint& pos, Qt::MouseButton button, bool doubleClick) {
    const QModelIndex index = list_->indexAt(pos);
    if (!index.isValid())
        return;
    const QPoint global = list_->viewport()->mapToGlobal(pos);
    if (index.data(BookmarkListModel::IsHeaderRole).toBool()) {
        const QString group = index.data(BookmarkListModel::GroupRole).toString();
        const QRect rect = list_->visualRect(index);
        if (button == Qt::RightButton)
            Q_EMIT headerMenuRequested(group, global);
        else if (delegate_->headerButton(rect, true).contains(pos))
            model_.moveGroup(group, true);
        else if (delegate_->headerButton(rect, false).contains(pos))
            model_.moveGroup(group, false);
        return;
    }
    const int row = index.data(BookmarkListModel::RowIndexRole).toInt();
    model_.setSelection(row);
    if (button == Qt::RightButton)
        Q_EMIT rowMenuRequested(row, global);
    else if (doubleClick)
        model_.open(row, false, false);
}

} // namespace deskmark
