#include "core/spaces/MonitorIdentity.h"
#include "x11/X11TestTools.h"

#include <QTest>
#include <QUuid>

using namespace deskmark;

namespace {

QStringList uuidsOf(const QList<MonitorIdentity>& monitors) {
    return MonitorIdentity::displayUUIDs(monitors);
}

} // namespace

class MonitorIdentityTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void edidFactsAreRead() {
        const auto facts = MonitorIdentity::parseEdid(edid("DEL", 0xA0B1, 0x01020304, "CN0ABC123"));
        QVERIFY(facts.has_value());
        QCOMPARE(facts->manufacturer, QStringLiteral("DEL"));
        QCOMPARE(facts->productCode, quint16(0xA0B1));
        QCOMPARE(facts->serialNumber, quint32(0x01020304));
        QCOMPARE(facts->serialText, QStringLiteral("CN0ABC123"));

        const auto bare = MonitorIdentity::parseEdid(edid("GSM", 1, 0));
        QVERIFY(bare.has_value());
        QVERIFY(bare->serialText.isEmpty());
        QVERIFY(!bare->hasSerial());

        // Extension blocks after the base block change nothing.
        QCOMPARE(MonitorIdentity::parseEdid(edid("GSM", 1, 0) + QByteArray(128, '\x02')), bare);
    }

    void somethingElseIsNoEdid_data() {
        QTest::addColumn<QByteArray>("data");
        const QByteArray good = edid("DEL", 1, 2);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("short") << good.left(127);
        QByteArray header = good;
        header[0] = 1;
        QTest::newRow("no header") << header;
        QByteArray letters = good;
        letters[8] = 0;
        letters[9] = 0;
        QTest::newRow("no manufacturer") << letters;
    }
    void somethingElseIsNoEdid() {
        QFETCH(QByteArray, data);
        QVERIFY(!MonitorIdentity::parseEdid(data).has_value());
        // Such a monitor is known by its name, like one without any EDID.
        QCOMPARE(uuidsOf({MonitorIdentity("HDMI-1", "HDMI-1", data)}),
                 uuidsOf({MonitorIdentity("HDMI-1", "", {})}));
    }

    // Per-display settings are stored under these UUIDs: they must never change.
    void uuidsAreFixedUpperCaseVersion5() {
        const QStringList uuids =
            uuidsOf({MonitorIdentity("LEFT", "", {}),
                     MonitorIdentity("DP-1", "DP-1", edid("DEL", 0xA0B1, 7))});
        QCOMPARE(uuids, (QStringList{"31F7D540-BF36-556A-AA38-8F81A9F610F5",
                                     "820B77EF-8A43-5322-B893-84101473334E"}));
        for (const QString& uuid : uuids)
            QCOMPARE(QUuid::fromString(uuid).version(), QUuid::Sha1);
    }

    void monitorWithSerialKeepsItsUUIDOnAnyConnector() {
        const QByteArray panel = edid("DEL", 0xA0B1, 7);
        QCOMPARE(uuidsOf({MonitorIdentity("DP-1", "DP-1", panel)}),
                 uuidsOf({MonitorIdentity("HDMI-2", "HDMI-2", panel)}));
        const QByteArray textOnly = edid("DEL", 0xA0B1, 0, "CN0ABC123");
        QCOMPARE(uuidsOf({MonitorIdentity("DP-1", "DP-1", textOnly)}),
                 uuidsOf({MonitorIdentity("DP-2", "DP-2", textOnly)}));
    }

    void differentFactsGiveDifferentUUIDs() {
        const QStringList uuids =
            uuidsOf({MonitorIdentity("DP-1", "DP-1", edid("DEL", 1, 7)),
                     MonitorIdentity("DP-2", "DP-2", edid("DEL", 1, 8)),
                     MonitorIdentity("DP-3", "DP-3", edid("DEL", 2, 7)),
                     MonitorIdentity("DP-4", "DP-4", edid("GSM", 1, 7)),
                     MonitorIdentity("DP-5", "DP-5", edid("DEL", 1, 7, "X"))});
        QCOMPARE(QSet<QString>(uuids.begin(), uuids.end()).size(), uuids.size());
    }

    void identicalMonitorsDoNotCollide_data() {
        QTest::addColumn<QByteArray>("panel");
        QTest::newRow("no serial") << edid("AUS", 0x27A3, 0);
        QTest::newRow("same serial") << edid("AUS", 0x27A3, 0x01010101);
        QTest::newRow("same serial text") << edid("AUS", 0x27A3, 0, "SAME");
    }
    void identicalMonitorsDoNotCollide() {
        QFETCH(QByteArray, panel);
        const QStringList uuids = uuidsOf(
            {MonitorIdentity("DP-1", "DP-1", panel), MonitorIdentity("DP-2", "DP-2", panel)});
        QCOMPARE_NE(uuids[0], uuids[1]);
    }

    void monitorWithoutSerialIsStableWhetherOrNotItsTwinIsPlugged() {
        const QByteArray panel = edid("AUS", 0x27A3, 0);
        const QString alone = uuidsOf({MonitorIdentity("DP-1", "DP-1", panel)}).first();
        const QString withTwin = uuidsOf({MonitorIdentity("DP-2", "DP-2", panel),
                                          MonitorIdentity("DP-1", "DP-1", panel)})
                                     .last();
        QCOMPARE(withTwin, alone);
    }

    void monitorWithoutEdidIsKnownByItsName() {
        QCOMPARE(uuidsOf({MonitorIdentity("LEFT", "screen", {})}),
                 uuidsOf({MonitorIdentity("LEFT", "", {})}));
        const QStringList uuids =
            uuidsOf({MonitorIdentity("LEFT", "", {}), MonitorIdentity("RIGHT", "", {})});
        QCOMPARE_NE(uuids[0], uuids[1]);
    }
};

QTEST_GUILESS_MAIN(MonitorIdentityTest)
#include "MonitorIdentityTest.moc"
