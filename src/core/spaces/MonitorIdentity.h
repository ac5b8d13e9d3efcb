#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace deskmark {

// What makes a monitor the same monitor across restarts and re-plugging, and the
// display UUID derived from it.
//
// A monitor with an EDID is known by its manufacturer, product code and serial number,
// so it keeps its UUID on another connector. Without a serial number, or when another
// monitor of the same screen carries identical facts (cheap panels often report the
// same serial), the connector name is mixed in so that the two never share a UUID.
// A monitor without an EDID (Xvfb, virtual machines, monitors made with
// `xrandr --setmonitor`) is known by its RandR monitor name, which the X server keeps
// unique per screen. Window managers that report the EDID facts as text instead (sway's
// make, model and serial of an output) are known by those the same way.
class MonitorIdentity {
public:
    struct Edid {
        QString manufacturer; // three-letter PNP id, e.g. "DEL"
        quint16 productCode = 0;
        quint32 serialNumber = 0; // 0: not given
        QString serialText;       // the serial-number descriptor; empty when absent

        bool hasSerial() const { return serialNumber != 0 || !serialText.isEmpty(); }
        bool operator==(const Edid&) const = default;
    };

    // connector: the name of the monitor's first output ("DP-1"), empty when it has none;
    // edid: that output's EDID property, empty when it has none.
    MonitorIdentity(const QString& monitorName, const QString& connector, const QByteArray& edid);
    // An output known by the name the window manager gives it and the facts it reports
    // as text; "Unknown" or empty facts count as not reported.
    static MonitorIdentity reported(const QString& outputName, const QString& make,
                                    const QString& model, const QString& serial);

    // The facts of an EDID base block; nothing when the data is not one.
    static std::optional<Edid> parseEdid(const QByteArray& data);

    // The upper-case display UUIDs of the monitors of one screen, in the same order.
    static QStringList displayUUIDs(const QList<MonitorIdentity>& monitors);

private:
    MonitorIdentity() = default;
    QString seed(const QList<MonitorIdentity>& screen) const;

    QString name_;
    QString connector_;
    QStringList facts_; // what identifies the monitor itself; empty: only its name does
    bool hasSerial_ = false;
};

} // namespace deskmark
