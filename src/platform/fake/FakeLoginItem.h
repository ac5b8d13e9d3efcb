#pragma once

#include "core/app/LoginItem.h"

namespace deskmark {

// An in-memory login item: remembers its state, counts the changes asked of it and
// refuses them with refusal's text when that is set.
class FakeLoginItem : public LoginItem {
public:
    explicit FakeLoginItem(bool enabled = false) : enabled_(enabled) {}

    bool isEnabled() const override { return enabled_; }
    bool setEnabled(bool enabled, QString* error) override {
        ++changeRequests;
        if (!refusal.isEmpty()) {
            *error = refusal;
            return false;
        }
        enabled_ = enabled;
        return true;
    }

    QString refusal;
    int changeRequests = 0;

private:
    bool enabled_;
};

} // namespace deskmark
