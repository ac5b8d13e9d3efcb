#include "core/model/ProjectStore.h"
#include "core/StoreTestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QRegularExpression>
#include <QSignalSpy>

using namespace deskmark;
using namespace deskmark::testfiles;

namespace {
const char* const kIdA = "AAAAAAAA-0000-4000-8000-000000000001";
const char* const kIdB = "BBBBBBBB-0000-4000-8000-000000000002";

QByteArray projectsFile(const QByteArray& projects, const QByteArray& assignments = "{}") {
    return "{\"version\":1,\"projects\":[" + projects + "],\"assignments\":" + assignments + "}";
}

QByteArray project(const QByteArray& id, const char* name) {
    return json("{'id':'%1','name':'%2'}").replace("%1", id).replace("%2", name);
}

// A file holding one project with id A and the given fields; %B stands for id B.
QByteArray projectA(const char* fields) {
    const QByteArray body = json(fields).replace("%B", kIdB);
    return projectsFile("{\"id\":\"" + QByteArray(kIdA) + "\"," + body + "}");
}

QStringList names(const QList<Project>& projects) {
    QStringList result;
    for (const Project& project : projects)
        result << project.name;
    return result;
}

const char* const kDecodeFailed = "Deskmark: projects.json のデコードに失敗（空で開始）";
const char* const kSetAside =
    "Deskmark: 読み込めなかった projects.json を projects.json.broken に退避";
const QRegularExpression kSaveFailed("^Deskmark: projects\\.json の保存に失敗: .+");
} // namespace

class ProjectStoreTest : public QObject {
    Q_OBJECT
    TempFolder dir_;

private Q_SLOTS:
    void init() {
        dir_.reset();
        QTest::failOnWarning(QRegularExpression(".*"));
    }

    // ---- persistence and migration ----

    void freshFolderStaysEmptyUntilTheFirstChange() {
        const QString folder = dir_.path("nested/Deskmark");
        ProjectStore store(folder);
        QVERIFY(QFileInfo(folder).isDir());
        QVERIFY(store.projects().isEmpty());
        QVERIFY(!QFile::exists(folder + "/projects.json"));
        store.addProject("Work", std::nullopt);
        QVERIFY(QFile::exists(folder + "/projects.json"));
    }

    void migration_data() {
        QTest::addColumn<QByteArray>("namesJson");
        QTest::addColumn<QStringList>("spaces"); // in creation order
        QTest::addColumn<QStringList>("expectedNames");
        QTest::addColumn<QStringList>("expectedPresets"); // "" for none
        QTest::newRow("oldest form")
            << json("{'X':'Work'}") << QStringList{"X"} << QStringList{"Work"} << QStringList{""};
        QTest::newRow("newer form, by Space UUID, names untrimmed")
            << json("{'B':{'name':' Two ','presetID':'p1'},'A':{'name':'One','presetID':null}}")
            << QStringList{"A", "B"} << QStringList{"One", " Two "} << QStringList{"", "p1"};
        QTest::newRow("same names stay apart, empty names kept")
            << json("{'S2':'Same','S1':'Same','S3':''}") << QStringList{"S1", "S2", "S3"}
            << QStringList{"Same", "Same", ""} << QStringList{"", "", ""};
        QTest::newRow("empty object")
            << QByteArray("{}") << QStringList{} << QStringList{} << QStringList{};
        // U+FEFF is an ordinary character inside a string, raw or escaped.
        QTest::newRow("keys and names apart by a leading U+FEFF")
            << json("{'\xEF\xBB\xBFS':'\xEF\xBB\xBFOne','S':'\\ufeffTwo'}")
            << QStringList{"S", QStringView(u"\uFEFFS").toString()}
            << QStringList{QStringView(u"\uFEFFTwo").toString(),
                           QStringView(u"\uFEFFOne").toString()}
            << QStringList{"", ""};
    }
    void migration() {
        QFETCH(QByteArray, namesJson);
        QFETCH(QStringList, spaces);
        QFETCH(QStringList, expectedNames);
        QFETCH(QStringList, expectedPresets);
        writeFile(dir_.path("names.json"), namesJson);
        QTest::ignoreMessage(
            QtWarningMsg,
            qPrintable(QStringLiteral("Deskmark: names.json から %1 件のプロジェクトへ移行")
                           .arg(spaces.size())));
        QList<Project> migrated;
        {
            ProjectStore store(dir_.path());
            migrated = store.projects();
            QCOMPARE(names(migrated), expectedNames);
            for (qsizetype i = 0; i < spaces.size(); ++i) {
                QCOMPARE(store.assignments().value(spaces[i]), migrated[i].id);
                QCOMPARE(migrated[i].presetID.value_or(""), expectedPresets[i]);
                // An empty name is no name, though the project is assigned.
                const QString& name = expectedNames[i];
                QCOMPARE(store.nameForSpace(spaces[i]),
                         name.isEmpty() ? std::nullopt : std::optional(name));
            }
        }
        QVERIFY(QFile::exists(dir_.path("projects.json")));
        QCOMPARE(QFile::exists(dir_.path("names.json.bak")), !spaces.isEmpty());
        QCOMPARE(readFile(dir_.path("names.json")), namesJson); // left in place

        ProjectStore again(dir_.path()); // no second migration: no log line, same ids
        QCOMPARE(again.projects(), migrated);
    }

    void migrationAbortsOnNamesInNeitherForm_data() {
        QTest::addColumn<QByteArray>("namesJson");
        QTest::newRow("array") << json("['Work']");
        QTest::newRow("mixed forms") << json("{'A':'One','B':{'name':'Two'}}");
        QTest::newRow("object without name") << json("{'A':{'presetID':'p'}}");
        QTest::newRow("truncated") << json("{'A':'On");
    }
    void migrationAbortsOnNamesInNeitherForm() {
        QFETCH(QByteArray, namesJson);
        writeFile(dir_.path("names.json"), namesJson);
        const char* aborted = "Deskmark: names.json を解釈できないため移行を中止（空で開始）";
        for (int launch = 0; launch < 2; ++launch) { // tried again at the next launch
            QTest::ignoreMessage(QtWarningMsg, aborted);
            ProjectStore store(dir_.path());
            QVERIFY(store.projects().isEmpty());
            QVERIFY(!QFile::exists(dir_.path("projects.json")));
            QVERIFY(!QFile::exists(dir_.path("names.json.bak")));
        }
    }

    void failedBackupDoesNotStopTheMigration() {
        writeFile(dir_.path("names.json"), json("{'X':'Work'}"));
        QVERIFY(QDir().mkpath(dir_.path("names.json.bak/occupied")));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression("^Deskmark: names\\.json\\.bak の作成に失敗: .+"));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: names.json から 1 件のプロジェクトへ移行");
        ProjectStore store(dir_.path());
        QCOMPARE(store.nameForSpace("X"), std::optional<QString>("Work"));
        QVERIFY(QFile::exists(dir_.path("projects.json")));
    }

    void everythingSurvivesAReload() {
        QList<Project> projects;
        QHash<QString, QUuid> assignments;
        {
            ProjectStore store(dir_.path());
            store.set("Ünïcode \"quoted\" \\ 日本語 😀 \x01", "p7", "space-1");
            const Project other = store.addProject("Other", std::nullopt);
            store.assign(other.id, "desktop-2");
            Bookmark bookmark{QUuid::createUuid(), Bookmark::Kind::File, "", "~/a\tb", " G ",
                              "org.gnome.Nautilus"};
            QVERIFY(store.addBookmark(bookmark, other.id));
            projects = store.projects();
            assignments = store.assignments();
        }
        ProjectStore reloaded(dir_.path());
        QCOMPARE(reloaded.projects(), projects);
        QCOMPARE(reloaded.assignments(), assignments);

        // Standard JSON that another reader accepts, ids upper case without braces.
        const QJsonObject root = jsonObject(readFile(dir_.path("projects.json")));
        QCOMPARE(root.value("version").toInt(), 1);
        const QJsonObject first = root.value("projects").toArray().first().toObject();
        QCOMPARE(first.value("id").toString(),
                 projects.first().id.toString(QUuid::WithoutBraces).toUpper());
        QCOMPARE(first.value("name").toString(), projects.first().name);
        QVERIFY(!root.value("projects").toArray().last().toObject().contains("presetID"));
    }

    void loadAcceptsWhatTheFormatAllows() {
        // Version 7, optional keys absent or null, unknown keys, escapes, a byte-order
        // mark before the text and U+FEFF starting a string, lower-case ids and an
        // assignment to a project that no longer exists.
        const QByteArray file =
            "\xEF\xBB\xBF" +
            json("{'future':{'deep':[1,2.5e3,true,null,{'x':[]}]},'version':7,'projects':["
                 "{'id':'aaaaaaaa-0000-4000-8000-000000000001','name':'Caf\\u00e9 "
                 "\\ud83d\\ude00\\n',"
                 " 'presetID':null,'bookmarks':null,'extra':'x'},"
                 "{'id':'%B','name':'\xEF\xBB\xBF\xEF\xBB\xBF"
                 "B','groups':['G2'],'bookmarks':["
                 "  {'id':'%A','kind':'url','label':'a','target':'t1','group':'G1'},"
                 "  {'id':'%B','kind':'file','label':'b','target':'t2','group':null},"
                 "  {'id':'%A','kind':'url','label':'c','target':'t3','group':'G2'}]}],"
                 "'assignments':{'s1':'%A','\xEF\xBB\xBFs1':'%B',"
                 "'gone':'CCCCCCCC-0000-4000-8000-000000000003'}}")
                .replace("%A", kIdA)
                .replace("%B", kIdB);
        writeFile(dir_.path("projects.json"), file);
        ProjectStore store(dir_.path());
        // (QString(const char*) would drop a leading U+FEFF too: hence the UTF-16 literals.)
        const QString bomB = QStringView(u"\uFEFF\uFEFFB").toString();
        QCOMPARE(names(store.projects()), (QStringList{"Café 😀\n", bomB}));
        QCOMPARE(store.nameForSpace("s1"), std::optional<QString>("Café 😀\n"));
        QCOMPARE(store.nameForSpace(QStringView(u"\uFEFFs1").toString()), std::optional(bomB));
        QVERIFY(store.assignments().contains("gone"));
        QVERIFY(!store.projectForSpace("gone"));

        // Used groups are appended to the list and the bookmarks put in group order, in
        // memory only until the next change.
        const Project& grouped = store.projects().last();
        QCOMPARE(grouped.groups, (QStringList{"G2", "G1"}));
        QStringList labels;
        for (const Bookmark& bookmark : grouped.bookmarks)
            labels << bookmark.label;
        QCOMPARE(labels, (QStringList{"b", "c", "a"}));
        QCOMPARE(readFile(dir_.path("projects.json")), file);

        store.setName("Renamed", "s1");
        const QByteArray saved = readFile(dir_.path("projects.json"));
        const QJsonObject first = jsonObject(saved)["projects"].toArray().first().toObject();
        QVERIFY(first.value("bookmarks").isArray() && first.value("groups").isArray());
        QCOMPARE(first.value("name").toString(), "Renamed");
    }

    // ---- bad input ----

    void undecodableFileIsSetAsideBeforeTheFirstSave_data() {
        QTest::addColumn<QByteArray>("content");
        const QByteArray good = project(kIdA, "A");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("truncated") << projectsFile(good).chopped(3);
        QTest::newRow("trailing garbage") << projectsFile(good) + "x";
        QTest::newRow("array at the top") << QByteArray("[]");
        QTest::newRow("no version") << json("{'projects':[],'assignments':{}}");
        QTest::newRow("no projects") << json("{'version':1,'assignments':{}}");
        QTest::newRow("no assignments") << json("{'version':1,'projects':[]}");
        const auto version = [](const char* v) {
            return "{\"version\":" + QByteArray(v) + ",\"projects\":[],\"assignments\":{}}";
        };
        QTest::newRow("version as text") << version("\"1\"");
        QTest::newRow("fractional version") << version("1.5");
        QTest::newRow("leading zero") << version("01");
        QTest::newRow("version beyond 64-bit integers") << version("1e19");
        QTest::newRow("project without id") << projectsFile(json("{'name':'A'}"));
        QTest::newRow("project without name") << projectA("'x':1");
        QTest::newRow("id not a UUID") << projectsFile(project("{AAAAAAAA-0000}", "A"));
        QTest::newRow("name as number") << projectA("'name':3");
        QTest::newRow("preset as number") << projectA("'name':'A','presetID':1");
        QTest::newRow("groups with a number") << projectA("'name':'A','groups':[1]");
        QTest::newRow("bookmarks as object") << projectA("'name':'A','bookmarks':{}");
        QTest::newRow("unknown bookmark kind") << projectA(
            "'name':'A','bookmarks':[{'id':'%B','kind':'folder','label':'','target':'/'}]");
        QTest::newRow("bookmark without target")
            << projectA("'name':'A','bookmarks':[{'id':'%B','kind':'url','label':''}]");
        QTest::newRow("trailing comma") << projectA(
            "'name':'A','bookmarks':[{'id':'%B','kind':'url','label':'','target':'x'},]");
        QTest::newRow("assignment not a UUID") << projectsFile(good, json("{'s':'nope'}"));
        QTest::newRow("bad escape") << projectsFile(project(kIdA, "\\x41"));
        QTest::newRow("raw control character") << projectsFile(project(kIdA, "a\nb"));
        // Text is UTF-8 and escapes name whole characters: nothing is read with a
        // replacement character in place of what the file holds.
        QTest::newRow("invalid UTF-8") << projectsFile(project(kIdA, "caf\xE9"));
        QTest::newRow("invalid UTF-8 after a long plain run")
            << projectsFile(project(kIdA, "abcdefghijklmnopqrstuvwx\xFFyz"));
        QTest::newRow("overlong UTF-8") << projectsFile(project(kIdA, "\xC0\xAF"));
        QTest::newRow("surrogate written as UTF-8") << projectsFile(project(kIdA, "\xED\xA0\x80"));
        QTest::newRow("invalid UTF-8 in an unknown key")
            << json("{'v\xFF':1,'version':1,'projects':[],'assignments':{}}");
        QTest::newRow("invalid UTF-8 beside an escape") << projectsFile(project(kIdA, "\\n\xFF"));
        QTest::newRow("lone high surrogate escape") << projectsFile(project(kIdA, "\\ud83dx"));
        QTest::newRow("lone low surrogate escape") << projectsFile(project(kIdA, "\\ude00"));
        QTest::newRow("high surrogate escape before another escape")
            << projectsFile(project(kIdA, "\\ud83d\\u0041"));
        QTest::newRow("very deep unknown value")
            << "{\"x\":" + QByteArray(5000, '[') + QByteArray(5000, ']') +
                   ",\"version\":1,\"projects\":[],\"assignments\":{}}";
    }
    void undecodableFileIsSetAsideBeforeTheFirstSave() {
        QFETCH(QByteArray, content);
        writeFile(dir_.path("projects.json"), content);
        QTest::ignoreMessage(QtWarningMsg, kDecodeFailed);
        ProjectStore store(dir_.path());
        QVERIFY(store.projects().isEmpty());
        QCOMPARE(readFile(dir_.path("projects.json")), content);
        QCOMPARE(store.damagedFileCopy(), dir_.path("projects.json.broken"));

        QTest::ignoreMessage(QtWarningMsg, kSetAside);
        store.addProject("Fresh", std::nullopt);
        store.addProject("Fresher", std::nullopt); // set aside once only
        QCOMPARE(readFile(dir_.path("projects.json.broken")), content);
        const ProjectStore reread(dir_.path());
        QCOMPARE(names(reread.projects()), (QStringList{"Fresh", "Fresher"}));
        QCOMPARE(reread.damagedFileCopy(), std::nullopt);
    }

    // Every save fails for the whole run: the user is told once, the log has one line.
    void folderWhereTheFileShouldBe() {
        QVERIFY(QDir().mkpath(dir_.path("projects.json/inside")));
        QStringList told;
        StoreFile::setFailureHandler([&](const QString& path, const QString&) { told << path; });
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: projects.json の読み込みに失敗");
        ProjectStore store(dir_.path());
        QSignalSpy changed(&store, &ProjectStore::changed);
        QTest::ignoreMessage(QtWarningMsg, kSaveFailed);
        store.setName("Kept", "s");
        store.setName("Kept too", "t");
        store.addProject("And this", std::nullopt);
        StoreFile::setFailureHandler(nullptr);
        QCOMPARE(store.nameForSpace("s"), std::optional<QString>("Kept"));
        QCOMPARE(changed.count(), 3);
        QCOMPARE(told, QStringList{dir_.path("projects.json")});
        QVERIFY(QFileInfo(dir_.path("projects.json/inside")).isDir());
    }

    void unwritableLocationKeepsTheMemory() {
        writeFile(dir_.path("plain"), "x");
        ProjectStore store(dir_.path("plain/Deskmark")); // the folder cannot be created
        QTest::ignoreMessage(QtWarningMsg, kSaveFailed);
        store.addProject("Kept", std::nullopt);
        QCOMPARE(names(store.projects()), QStringList{"Kept"});
    }

    void unencodableTextLeavesTheGoodFile() {
        ProjectStore store(dir_.path());
        store.setName("Good", "s");
        const QByteArray good = readFile(dir_.path("projects.json"));
        QTest::ignoreMessage(QtWarningMsg, "Deskmark: projects.json のエンコードに失敗");
        store.setName(QString(QChar(0xD800)) + "x", "s"); // a lone surrogate
        QCOMPARE(store.projects().first().name.size(), 2);
        QCOMPARE(readFile(dir_.path("projects.json")), good);
    }

    // ---- queries and Space edits ----

    void spaceEdits() {
        ProjectStore store(dir_.path());
        QSignalSpy changed(&store, &ProjectStore::changed);

        store.setName("  Work\n", "s1"); // an unassigned Space gets a new project
        const QUuid work = store.projects().first().id;
        store.assign(work, "s2");
        store.setName("Shared", "s2"); // renames the project for both Spaces
        QCOMPARE(store.nameForSpace("s1"), std::optional<QString>("Shared"));
        QCOMPARE(store.projects().size(), 1);
        QCOMPARE(store.assignmentCount(work), 2);
        QCOMPARE(store.assignmentCount(work, QSet<QString>{"s2", "s9"}), 1);

        store.setPreset("blue", "s1");
        QCOMPARE(store.projectForSpace("s2")->presetID, std::optional<QString>("blue"));
        store.setName("Renamed", "s2"); // keeps the preset
        QCOMPARE(store.projectForSpace("s1")->presetID, std::optional<QString>("blue"));
        store.setPreset("default", "s2"); // "default" is stored as no preset; keeps the name
        QCOMPARE(store.project(work)->presetID, std::nullopt);
        QCOMPARE(store.nameForSpace("s1"), std::optional<QString>("Renamed"));

        store.setName(" \t\n", "s1"); // blanks make the Space unnamed; the project stays
        QVERIFY(!store.nameForSpace("s1"));
        QCOMPARE(store.projects().size(), 1);
        QCOMPARE(changed.count(), 7);

        store.setPreset("blue", "s1"); // an unnamed Space gets nothing, yet it is saved
        store.setName("", "s1");
        QVERIFY(!store.assignments().contains("s1"));
        QCOMPARE(store.projects().size(), 1);
        QCOMPARE(changed.count(), 9);

        store.assign(QUuid::createUuid(), "s1"); // unknown project, unknown Space
        store.unassign("s1");
        QCOMPARE(changed.count(), 9);

        store.set(" Named ", "default", "s3");
        QCOMPARE(store.projectForSpace("s3")->name, "Named");
        QCOMPARE(store.projectForSpace("s3")->presetID, std::nullopt);
    }

    void projectEdits() {
        ProjectStore store(dir_.path());
        QSignalSpy changed(&store, &ProjectStore::changed);
        const Project a = store.addProject(" A ", "default");
        QCOMPARE(a.name, "A");
        QCOMPARE(a.presetID, std::nullopt);
        const Project b = store.addProject("B", "red");
        store.assign(a.id, "s1");
        store.assign(a.id, "s2");
        store.assign(b.id, "s3");

        Project edited = *store.project(b.id);
        edited.name = "\tB2 ";
        edited.presetID = "default";
        store.updateProject(edited);
        QCOMPARE(store.project(b.id)->name, "B2");
        QCOMPARE(store.project(b.id)->presetID, std::nullopt);
        edited.id = QUuid::createUuid();
        store.updateProject(edited); // unknown id
        QCOMPARE(changed.count(), 6);

        store.updateProject(Project{b.id, "B", "red", {}, {}});
        store.clearPreset("green"); // unused: nothing happens
        QCOMPARE(changed.count(), 7);
        store.clearPreset("red");
        QCOMPARE(store.project(b.id)->presetID, std::nullopt);

        store.deleteProject(a.id); // both of its Spaces become unnamed
        QVERIFY(!store.nameForSpace("s1") && !store.nameForSpace("s2"));
        QCOMPARE(store.assignments().keys(), QStringList{"s3"});
        store.deleteProject(a.id);
        QCOMPARE(changed.count(), 9);
    }

    void naturalOrder_data() {
        QTest::addColumn<QStringList>("names"); // the ids increase along this list
        QTest::addColumn<QStringList>("sorted");
        QTest::newRow("digit runs by value") << QStringList{"Item 10", "Item 2", "Item 1"}
                                             << QStringList{"Item 1", "Item 2", "Item 10"};
        QTest::newRow("case-insensitive")
            << QStringList{"banana", "Apple", "cherry"} << QStringList{"Apple", "banana", "cherry"};
        QTest::newRow("equal names by id")
            << QStringList{"same", "Same", "SAME"} << QStringList{"same", "Same", "SAME"};
        QTest::newRow("equal names by id, other case first")
            << QStringList{"Same", "same", "x"} << QStringList{"Same", "same", "x"};
    }
    void naturalOrder() {
        QFETCH(QStringList, names);
        QFETCH(QStringList, sorted);
        // Written in reverse, so that keeping the file order cannot pass for id order.
        QByteArray entries;
        for (qsizetype i = names.size() - 1; i >= 0; --i) {
            const QByteArray id =
                QByteArray::number(i).rightJustified(8, '0') + "-0000-4000-8000-000000000000";
            entries += (entries.isEmpty() ? "" : ",") + project(id, qPrintable(names[i]));
        }
        writeFile(dir_.path("projects.json"), projectsFile(entries));
        QCOMPARE(::names(ProjectStore(dir_.path()).sortedProjects()), sorted);
    }
};

QTEST_GUILESS_MAIN(ProjectStoreTest)
#include "ProjectStoreTest.moc"
