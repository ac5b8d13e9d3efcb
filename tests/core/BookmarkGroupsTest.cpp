#include "core/StoreTestFiles.h"
#include "core/model/BookmarkOrder.h"
#include "core/model/ProjectStore.h"

#include <QDir>
#include <QRegularExpression>
#include <QSignalSpy>

#include <memory>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {

Bookmark url(const QString& target, const QString& label = "x",
             Bookmark::Kind kind = Bookmark::Kind::Url) {
    return Bookmark{QUuid::createUuid(), kind, label, target, std::nullopt, std::nullopt};
}

Bookmark file(const QString& target) {
    return url(target, "f", Bookmark::Kind::File);
}

// Bookmark lists written compactly: "label:group" items separated by blanks, where an
// empty group means ungrouped ("u1:" or "a1:A"). Labels double as targets.
QList<Bookmark> bookmarks(const QString& text) {
    QList<Bookmark> result;
    for (const QString& item : text.split(' ', Qt::SkipEmptyParts)) {
        const QString label = item.section(':', 0, 0), group = item.section(':', 1);
        result << url("https://" + label, label);
        result.last().group = group.isEmpty() ? std::nullopt : std::optional(group);
    }
    return result;
}

QString describe(const QList<Bookmark>& list) {
    QStringList items;
    for (const Bookmark& bookmark : list)
        items << bookmark.label + ':' + bookmark.group.value_or(QString());
    return items.join(' ');
}

} // namespace

class BookmarkGroupsTest : public QObject {
    Q_OBJECT
    TempFolder dir_;
    std::unique_ptr<ProjectStore> store_;
    QUuid project_;

    // A project with the given groups and bookmarks, added through the store.
    void setUp(const QStringList& groups, const QString& list) {
        for (const QString& group : groups)
            store_->addGroup(group, project_);
        for (const Bookmark& bookmark : bookmarks(list))
            QVERIFY(store_->addBookmark(bookmark, project_));
    }
    const Project current() const { return *store_->project(project_); }
    QUuid idOf(const QString& label) const {
        for (const Bookmark& bookmark : current().bookmarks)
            if (bookmark.label == label)
                return bookmark.id;
        return {};
    }

private Q_SLOTS:
    void init() {
        dir_.reset();
        store_ = std::make_unique<ProjectStore>(dir_.path());
        project_ = store_->addProject("P", std::nullopt).id;
        QTest::failOnWarning(QRegularExpression(".*"));
    }

    void dedupeKey_data() {
        QTest::addColumn<Bookmark>("bookmark");
        QTest::addColumn<QString>("key");
        const QString home = QDir::homePath();
        QTest::newRow("address as stored")
            << url("HTTPS://a.example/x/") << "url:HTTPS://a.example/x/";
        QTest::newRow("tilde and dots") << file("~/a/./b/../c") << "file:" + home + "/a/c";
        QTest::newRow("tilde alone") << file("~") << "file:" + home;
        QTest::newRow("tilde inside") << file("/x/~/y") << "file:/x/~/y";
        QTest::newRow("repeated and trailing slashes") << file("/x//y/") << "file:/x/y";
        QTest::newRow("dots above the root") << file("/a/../../b") << "file:/b";
        QTest::newRow("the root's parent") << file("/..") << "file:/";
        QTest::newRow("a name beginning with dots") << file("/..x/y") << "file:/..x/y";
        QTest::newRow("relative to the working folder")
            << file("docs/a") << "file:" + QDir::currentPath() + "/docs/a";
    }
    void dedupeKey() {
        QFETCH(Bookmark, bookmark);
        QFETCH(QString, key);
        QCOMPARE(bookmark.dedupeKey(), key);
    }

    void duplicates_data() {
        QTest::addColumn<Bookmark>("existing");
        QTest::addColumn<Bookmark>("added");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("same address, other label")
            << url("https://a", "one") << url("https://a", "two") << false;
        QTest::newRow("letter case differs") << url("https://a/X") << url("https://a/x") << true;
        QTest::newRow("trailing slash differs") << url("https://a") << url("https://a/") << true;
        QTest::newRow("same file written two ways")
            << file(QDir::homePath() + "/d/e") << file("~/d/./e") << false;
        QTest::newRow("file and address alike") << file("/a") << url("/a") << true;
    }
    void duplicates() {
        QFETCH(Bookmark, existing);
        QFETCH(Bookmark, added);
        QFETCH(bool, accepted);
        QVERIFY(store_->addBookmark(existing, project_));
        QSignalSpy changed(store_.get(), &ProjectStore::changed);
        QCOMPARE(store_->addBookmark(added, project_), accepted);
        QCOMPARE(current().bookmarks.size(), accepted ? 2 : 1);
        QCOMPARE(changed.count(), accepted ? 1 : 0);
    }

    void addedGroupIsTrimmedAndRegistered() {
        store_->addGroup("B", project_);
        Bookmark padded = url("https://a", "a");
        padded.group = "  A \n";
        QVERIFY(store_->addBookmark(padded, project_));
        Bookmark blank = url("https://b", "b");
        blank.group = " \t";
        QVERIFY(store_->addBookmark(blank, project_));
        QCOMPARE(store_->groupNames(project_), (QStringList{"B", "A"}));
        QCOMPARE(describe(current().bookmarks), "b: a:A");
        QCOMPARE(current().bookmarks.first().group, std::nullopt);
    }

    void groupedOrder_data() {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QStringList>("groups");
        QTest::addColumn<QString>("ordered");
        QTest::newRow("ungrouped first, then by groups")
            << "b1:B b2: b3:A" << QStringList{"A", "B"} << "b2: b3:A b1:B";
        QTest::newRow("unlisted groups last, by first use")
            << "x:X a:A y:Y x2:X u:" << QStringList{"A"} << "u: a:A x:X x2:X y:Y";
        QTest::newRow("empty group is ungrouped") << "a:A e:" << QStringList{"A"} << "e: a:A";
        QTest::newRow("repeated group name keeps its first place")
            << "b:B a:A" << QStringList{"A", "B", "A"} << "a:A b:B";
        QStringList many; // past the size where names are hashed
        QString list, ordered;
        for (int i = 0; i < 40; ++i) {
            many.prepend(QString::number(i));
            list += QStringLiteral("m%1:%1 ").arg(i);
            ordered.prepend(QStringLiteral("m%1:%1 ").arg(i));
        }
        QTest::newRow("many groups") << list + "z:new" << many << ordered + "z:new";
    }
    void groupedOrder() {
        QFETCH(QString, list);
        QFETCH(QStringList, groups);
        QFETCH(QString, ordered);
        QCOMPARE(describe(BookmarkOrder::groupedOrder(bookmarks(list), groups)), ordered);
    }

    void usedGroupsAreAppended() {
        QCOMPARE(BookmarkOrder::withUsedGroups({"B", "B"}, bookmarks("a:A b:B c: d:D a2:A")),
                 (QStringList{"B", "B", "A", "D"}));
    }

    void stepBookmark_data() {
        QTest::addColumn<QString>("label");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("after"); // empty: nothing happens
        QTest::newRow("swap inside a group") << "a2" << true << "u1: u2: a2:A a1:A b1:B";
        QTest::newRow("first of B up joins A as its last")
            << "b1" << true << "u1: u2: a1:A a2:A b1:A";
        QTest::newRow("first of A up becomes ungrouped") << "a1" << true << "u1: u2: a1: a2:A b1:B";
        QTest::newRow("last ungrouped down joins A as its first")
            << "u2" << false << "u1: u2:A a1:A a2:A b1:B";
        QTest::newRow("first ungrouped up") << "u1" << true << "";
        QTest::newRow("last of the last group down") << "b1" << false << "";
    }
    void stepBookmark() {
        QFETCH(QString, label);
        QFETCH(bool, up);
        QFETCH(QString, after);
        setUp({"A", "B"}, "u1: u2: a1:A a2:A b1:B");
        QSignalSpy changed(store_.get(), &ProjectStore::changed);
        store_->stepBookmark(idOf(label), project_, up);
        QCOMPARE(describe(current().bookmarks), after.isEmpty() ? "u1: u2: a1:A a2:A b1:B" : after);
        QCOMPARE(changed.count(), after.isEmpty() ? 0 : 1);
    }

    void setBookmarkGroupMakesItTheLastOfItsGroup() {
        setUp({"A"}, "u1: a1:A a2:A u2:");
        store_->setBookmarkGroup(idOf("a1"), project_, std::optional<QString>(" "));
        QCOMPARE(describe(current().bookmarks), "u1: u2: a1: a2:A");
        store_->setBookmarkGroup(idOf("u1"), project_, std::optional<QString>(" A"));
        QCOMPARE(describe(current().bookmarks), "u2: a1: a2:A u1:A");
        store_->setBookmarkGroup(idOf("u2"), project_, std::optional<QString>("New"));
        QCOMPARE(describe(current().bookmarks), "a1: a2:A u1:A u2:New");
        QCOMPARE(store_->groupNames(project_), (QStringList{"A", "New"}));
    }

    void updateBookmarkReplacesInPlaceWithoutDuplicateCheck() {
        setUp({"A"}, "one: two:A");
        Bookmark changed = current().bookmarks.first();
        changed.target = current().bookmarks.last().target;
        changed.group = " B ";
        store_->updateBookmark(changed, project_);
        QCOMPARE(describe(current().bookmarks), "two:A one:B");
        QCOMPARE(current().bookmarks.last().target, current().bookmarks.first().target);
        QCOMPARE(store_->groupNames(project_), (QStringList{"A", "B"}));
    }

    void renameGroup_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<bool>("renamed");
        QTest::newRow("onto an existing group") << QString("A") << "B" << false;
        QTest::newRow("blank") << QString("A") << " \n" << false;
        QTest::newRow("unchanged") << QString("A") << " A " << false;
        QTest::newRow("unknown group") << QString("Z") << "C" << false;
        QTest::newRow("new name, trimmed") << QString("A") << " C " << true;
    }
    void renameGroup() {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(bool, renamed);
        setUp({"A", "B"}, "a:A b:B");
        QSignalSpy changed(store_.get(), &ProjectStore::changed);
        QCOMPARE(store_->renameGroup(from, to, project_), renamed);
        QCOMPARE(store_->groupNames(project_),
                 (renamed ? QStringList{"C", "B"} : QStringList{"A", "B"}));
        QCOMPARE(describe(current().bookmarks), renamed ? "a:C b:B" : "a:A b:B");
        QCOMPARE(changed.count(), renamed ? 1 : 0);
    }

    void removeGroupKeepsItsBookmarksUngrouped() {
        setUp({"A", "B"}, "u: a1:A b:B a2:A");
        store_->removeGroup("A", project_);
        QCOMPARE(describe(current().bookmarks), "u: a1: a2: b:B");
        QCOMPARE(store_->groupNames(project_), QStringList{"B"});
    }

    void moveGroupReordersTheBookmarks() {
        setUp({"A", "B"}, "a:A b:B");
        QSignalSpy changed(store_.get(), &ProjectStore::changed);
        store_->moveGroup("A", true, project_);  // already first
        store_->moveGroup("B", false, project_); // already last
        store_->moveGroup("Z", true, project_);
        QCOMPARE(changed.count(), 0);
        store_->moveGroup("A", false, project_);
        QCOMPARE(store_->groupNames(project_), (QStringList{"B", "A"}));
        QCOMPARE(describe(current().bookmarks), "b:B a:A");
    }

    void unknownProjectOrBookmarkChangesNothing() {
        setUp({"A"}, "a:A");
        const Project before = current();
        QSignalSpy changed(store_.get(), &ProjectStore::changed);
        const QUuid nowhere = QUuid::createUuid();
        QVERIFY(!store_->addBookmark(url("https://new"), nowhere));
        QVERIFY(!store_->renameGroup("A", "B", nowhere));
        QVERIFY(store_->groupNames(nowhere).isEmpty());
        store_->addGroup("B", nowhere);
        store_->addGroup(" A ", project_); // already there
        store_->removeGroup("Z", project_);
        for (const QUuid& project : {nowhere, project_}) {
            store_->updateBookmark(url("https://other"), project); // unknown bookmark id
            store_->removeBookmark(QUuid::createUuid(), project);
            store_->stepBookmark(QUuid::createUuid(), project, true);
            store_->setBookmarkGroup(QUuid::createUuid(), project, std::nullopt);
        }
        QCOMPARE(changed.count(), 0);
        QCOMPARE(current(), before);

        store_->removeBookmark(before.bookmarks.first().id, project_);
        QVERIFY(current().bookmarks.isEmpty());
        QCOMPARE(store_->groupNames(project_), QStringList{"A"}); // groups outlive their bookmarks
    }
};

QTEST_GUILESS_MAIN(BookmarkGroupsTest)
#include "BookmarkGroupsTest.moc"
