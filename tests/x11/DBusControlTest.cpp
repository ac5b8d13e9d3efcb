#include "platform/linux/DBusControlClient.h"
#include "platform/linux/DBusControlService.h"

#include <QTest>

using namespace deskmark;

// The command line and the agent's command interface on one private session bus: every
// command word reaches its action, a switch carries its name and its answer back.
class DBusControlTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void commandsReachTheirActions() {
        QList<HotKeyAction> performed;
        QStringList switchedTo;
        DBusControlService service({[&](HotKeyAction action) { performed << action; },
                                    [&](const QString& name) {
                                        switchedTo << name;
                                        return name == QStringLiteral("Mail");
                                    }});
        const auto send = [](const QStringList& arguments) {
            QString detail;
            const CommandLine::Reply reply =
                DBusControlClient::send(CommandLine::parse(arguments), &detail);
            return detail.isEmpty() ? reply : CommandLine::Reply::Failed;
        };
        QCOMPARE(send({"switcher"}), CommandLine::Reply::NotRunning);

        QVERIFY(service.publish());
        const QStringList words{"rename", "next-preset", "settings", "bookmarks", "switcher"};
        for (const QString& word : words)
            QCOMPARE(send({word}), CommandLine::Reply::Done);
        QCOMPARE(performed, QList<HotKeyAction>(allHotKeyActions.begin(), allHotKeyActions.end()));
        QCOMPARE(send({"switch", "Mail"}), CommandLine::Reply::Done);
        QCOMPARE(send({"switch", "Docs"}), CommandLine::Reply::NoMatch);
        QCOMPARE(switchedTo, (QStringList{"Mail", "Docs"}));
    }
};

QTEST_GUILESS_MAIN(DBusControlTest)
#include "DBusControlTest.moc"
