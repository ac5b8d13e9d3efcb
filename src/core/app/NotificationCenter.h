#pragma once

#include <QObject>
#include <QString>

namespace deskmark {

// Named notifications within the process: whoever posts one reaches every object that
// listens to posted(), at once and on the posting thread.
class NotificationCenter : public QObject {
    Q_OBJECT
public:
    // The process-wide centre.
    static NotificationCenter& shared();

    void post(const QString& name) { Q_EMIT posted(name); }

Q_SIGNALS:
    void posted(const QString& name);

private:
    NotificationCenter() = default;
};

} // namespace deskmark
