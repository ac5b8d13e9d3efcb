// The bookmark popup's windows: what they show and how Return and the sizes behave.

#include "core/BookmarkTestDesktop.h"
#include "ui/BookmarkDeleteConfirmView.h"
#include "ui/BookmarkFormView.h"
#include "ui/BookmarkPopupCoordinator.h"
#include "ui/BookmarkPopupView.h"
#include "ui/BookmarkTargetTextView.h"
#include "ui/GroupNameView.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPointer>
#include <QTest>

using namespace deskmark;
using namespace deskmark::testfiles;

class BookmarkPopupViewTest : public QObject {
    Q_OBJECT
    BookmarkTestDesktop t_;

    void addAddresses(int count) {
        for (int i = 0; i < count; ++i)
            t_.projects->addBookmark({QUuid::createUuid(), Bookmark::Kind::Url, QString(),
                                    QStringLiteral("https://example.com/%1").arg(i),
                                    i % 2 ? std::optional(QStringLiteral("Odd")) : std::nullopt,
                                    std::nullopt},
                                   t_.project);
    }
    std::unique_ptr<BookmarkPopupCoordinator> popup() {
        return std::make_unique<BookmarkPopupCoordinator>(
            std::make_unique<BookmarkPopupModel>(t_.services(), "desktop-1", std::nullopt, std::nullopt),
            *t_.settings, BookmarkAnchor{BookmarkAnchor::Corner::TopLeft, {10, 10}},
            BookmarkPopupCoordinator::Hooks{});
    }
    // The form deletes itself once closed.
    QPointer<BookmarkFormView> form() {
        return new BookmarkFormView(std::make_unique<BookmarkFormModel>(
            *t_.projects, *t_.candidates, t_.project, std::nullopt, std::nullopt));
    }

private Q_SLOTS:
    void init() { t_.reset(); }

    // Rows are painted, not built: three hundred bookmarks make no more widgets than three.
    void theListBuildsNoWidgetPerRow() {
        addAddresses(3);
        auto few = popup();
        few->present();
        const qsizetype widgets = few->window()->findChildren<QWidget*>().size();
        few.reset();
        addAddresses(297);
        auto many = popup();
        many->present();
        QCOMPARE(many->window()->findChildren<QWidget*>().size(), widgets);
        QCOMPARE(many->window()->windowTitle(), QStringLiteral("Bookmarks"));
        // The list stops at its maximum and scrolls.
        QVERIFY(many->window()->findChild<QListView*>()->height() < many->window()->height());
    }

    // Files and folders dragged in from a file manager become file bookmarks, one each.
    void droppedFilesAreAdded() {
        auto shown = popup();
        shown->present();
        BookmarkPopupView* view = shown->window();
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(t_.dir.path()), QUrl::fromLocalFile("/etc/hostname"),
                      QUrl("https://example.com")});
        QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &enter);
        QVERIFY(enter.isAccepted() && view->dropTargeted());
        QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view, &drop);
        QVERIFY(!view->dropTargeted());
        QStringList targets;
        for (const BookmarkPopupModel::Row& row : shown->model().rows())
            targets << row.bookmark.target;
        QCOMPARE(targets, QStringList({t_.dir.path(), "/etc/hostname"}));
    }

    void returnInTheTargetSavesAndADuplicateKeepsTheFormOpen() {
        QPointer<BookmarkFormView> first = form();
        QCOMPARE(first->width(), 460);
        QCOMPARE(first->windowTitle(), QStringLiteral("Add Bookmark"));
        first->show();
        auto* target = first->findChild<BookmarkTargetTextView*>();
        QTest::keyClicks(target, "example.org");
        QTest::keyClick(target, Qt::Key_Return);
        QCOMPARE(first->result(), int(QDialog::Accepted));
        delete first;
        QCOMPARE(t_.projects->project(t_.project)->bookmarks.value(0).target, QStringLiteral("https://example.org"));

        QPointer<BookmarkFormView> second = form();
        second->show();
        target = second->findChild<BookmarkTargetTextView*>();
        QTest::keyClicks(target, "example.org");
        QTest::keyClick(target, Qt::Key_Return);
        QVERIFY(second->isVisible());
        QCOMPARE(target->toPlainText(), QStringLiteral("example.org"));
        const QList<QLabel*> labels = second->findChildren<QLabel*>();
        QVERIFY(std::any_of(labels.cbegin(), labels.cend(), [](const QLabel* label) {
            return label->isVisible() && label->text() == "This URL/path is already bookmarked.";
        }));
        delete second;
    }

    void dialogsHaveTheirWidthsAndAnEmptyNameIsKeptOnlyWhenAllowed() {
        QString committed = "-";
        GroupNameRequest request = GroupNameRequest::newGroup([&](const QString& name) { committed = name; });
        QPointer<GroupNameView> prompt = new GroupNameView(request);
        QCOMPARE(prompt->width(), 420);
        prompt->show();
        prompt->commit();
        QVERIFY(prompt && prompt->isVisible());
        QCOMPARE(committed, QStringLiteral("-"));
        QTest::keyClicks(prompt->findChild<QLineEdit*>(), "  Production ");
        prompt->commit();
        QCOMPARE(committed, QStringLiteral("Production"));
        delete prompt;

        BookmarkDeleteConfirmView confirm(QStringLiteral("example.org"));
        QCOMPARE(confirm.width(), 400);
        QCOMPARE(confirm.windowTitle(), QStringLiteral("Delete Bookmark"));
    }
};

QTEST_MAIN(BookmarkPopupViewTest)
#include "BookmarkPopupViewTest.moc"
