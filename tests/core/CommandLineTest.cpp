#include "core/app/CommandLine.h"
#include "core/app/Language.h"

#include <QTest>

using namespace deskmark;

using Mode = CommandLine::Mode;
using Reply = CommandLine::Reply;

class CommandLineTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { Language::setJapanese(false); }

    // Every argument list the program can meet: what it does, and for a command word the
    // action, for switch the name, for a mistake the exact first line and the status.
    void parse_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<Mode>("mode");
        QTest::addColumn<QString>("detail");
        QTest::newRow("no arguments: the agent") << QStringList{} << Mode::Agent << "";
        QTest::newRow("help") << QStringList{"--help"} << Mode::Help << "";
        QTest::newRow("short help after a command")
            << QStringList{"switch", "-h"} << Mode::Help << "";
        QTest::newRow("help after an unknown word")
            << QStringList{"bogus", "--help"} << Mode::Help << "";
        QTest::newRow("a name after -- is not help")
            << QStringList{"switch", "--", "--help"} << Mode::Switch << "--help";
        QTest::newRow("version") << QStringList{"--version"} << Mode::Version << "";
        QTest::newRow("diagnose") << QStringList{"--diagnose"} << Mode::Diagnose << "";
        QTest::newRow("switcher") << QStringList{"switcher"} << Mode::Action << "switcher";
        QTest::newRow("bookmarks") << QStringList{"bookmarks"} << Mode::Action << "bookmarks";
        QTest::newRow("rename") << QStringList{"rename"} << Mode::Action << "rename";
        QTest::newRow("settings") << QStringList{"settings"} << Mode::Action << "settings";
        QTest::newRow("next-preset") << QStringList{"next-preset"} << Mode::Action << "next-preset";
        QTest::newRow("switch keeps the name as given")
            << QStringList{"switch", " Dev Server "} << Mode::Switch << " Dev Server ";
        QTest::newRow("-- lets a name start with a dash")
            << QStringList{"switch", "--", "-x"} << Mode::Switch << "-x";
        QTest::newRow("unknown option") << QStringList{"--frobnicate"} << Mode::Invalid
                                        << "deskmark: unknown option '--frobnicate'";
        QTest::newRow("Qt's own options are not taken")
            << QStringList{"-platform", "xcb"} << Mode::Invalid
            << "deskmark: unknown option '-platform'";
        QTest::newRow("unknown command")
            << QStringList{"Switcher"} << Mode::Invalid << "deskmark: unknown command 'Switcher'";
        QTest::newRow("option after a command word")
            << QStringList{"rename", "-v"} << Mode::Invalid << "deskmark: unknown option '-v'";
        QTest::newRow("extra word after a command")
            << QStringList{"settings", "now"} << Mode::Invalid
            << "deskmark: unexpected argument 'now'";
        QTest::newRow("extra word after an option")
            << QStringList{"--version", "x"} << Mode::Invalid
            << "deskmark: unexpected argument 'x'";
        QTest::newRow("switch without a name")
            << QStringList{"switch"} << Mode::Invalid << "deskmark: switch needs a project name";
        QTest::newRow("switch with an empty name") << QStringList{"switch", ""} << Mode::Invalid
                                                   << "deskmark: switch needs a project name";
        QTest::newRow("switch with only --") << QStringList{"switch", "--"} << Mode::Invalid
                                             << "deskmark: switch needs a project name";
        QTest::newRow("switch with an option for a name")
            << QStringList{"switch", "-x"} << Mode::Invalid << "deskmark: unknown option '-x'";
        QTest::newRow("switch with two names")
            << QStringList{"switch", "Mail", "Docs"} << Mode::Invalid
            << "deskmark: unexpected argument 'Docs'";
    }
    void parse() {
        QFETCH(QStringList, arguments);
        QFETCH(Mode, mode);
        QFETCH(QString, detail);
        const CommandLine command = CommandLine::parse(arguments);
        QCOMPARE(command.mode(), mode);
        if (mode == Mode::Action) {
            // The command word is the one --help lists for that action.
            QVERIFY(command.action().has_value());
            QVERIFY(CommandLine::helpText().contains("\n  " + detail + " "));
        } else {
            QVERIFY(!command.action().has_value());
        }
        if (mode == Mode::Switch)
            QCOMPARE(command.projectName(), detail);
        if (mode == Mode::Invalid)
            QCOMPARE(command.usageErrorText(),
                     detail + "\nTry 'deskmark --help' for more information.\n");
    }

    // What the user reads after the agent's reply, and the exit status, in both languages.
    void replies() {
        const CommandLine switchMail = CommandLine::parse({"switch", "Mail"});
        using Report = CommandLine::Report;
        QCOMPARE(switchMail.report(Reply::Done), (Report{0, ""}));
        QCOMPARE(switchMail.report(Reply::NotRunning), (Report{1, "Deskmark is not running.\n"}));
        QCOMPARE(switchMail.report(Reply::NoMatch),
                 (Report{1, "No Space has a project called \"Mail\".\n"}));
        QCOMPARE(switchMail.report(Reply::Failed, "No such method"),
                 (Report{1, "Deskmark could not carry out the command: No such method\n"}));
        Language::setJapanese(true);
        QCOMPARE(switchMail.report(Reply::NotRunning),
                 (Report{1, "Deskmark は起動していません。\n"}));
        QCOMPARE(switchMail.report(Reply::NoMatch),
                 (Report{1, "プロジェクト名が「Mail」の Space はありません。\n"}));
        QCOMPARE(CommandLine::parse({"-x"}).usageErrorText(),
                 QString("deskmark: 不明なオプション「-x」\n"
                         "使い方は 'deskmark --help' で表示できます。\n"));
    }

    // The help lists every command and option in either language.
    void helpListsEverything() {
        for (const bool japanese : {false, true}) {
            Language::setJapanese(japanese);
            const QString help = CommandLine::helpText();
            for (const char* term : {"switcher", "bookmarks", "rename", "settings", "next-preset",
                                     "switch ", "--help", "--version", "--diagnose", "SW_DEBUG"})
                QVERIFY2(help.contains(term), term);
        }
        QCOMPARE(CommandLine::versionText(), QString("Deskmark " DESKMARK_VERSION "\n"));
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
