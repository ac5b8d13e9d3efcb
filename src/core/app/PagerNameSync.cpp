#include "core/app/PagerNameSync.h"

#include "core/model/ProjectStore.h"
#include "core/model/SettingsStore.h"
#include "core/spaces/DesktopNamer.h"
#include "core/spaces/SpaceStore.h"
#include "core/spaces/WindowServer.h"

namespace deskmark {

PagerNameSync::PagerNameSync(SettingsStore& settings, const ProjectStore& projects,
                             const SpaceStore& spaces, const WindowServer& windowServer,
                             DesktopNamer& namer, QObject* parent)
    : QObject(parent), settings_(settings), projects_(projects), spaces_(spaces), namer_(namer) {
    connect(&projects, &ProjectStore::changed, this, &PagerNameSync::sync);
    connect(&windowServer, &WindowServer::activeSpaceChanged, this, &PagerNameSync::sync);
    sync();
}

QStringList PagerNameSync::names(const QStringList& spaces, const ProjectStore& projects,
                                 const QStringList& found) {
    QStringList result;
    for (qsizetype i = 0; i < spaces.size(); ++i)
        result << projects.nameForSpace(spaces[i]).value_or(found.value(i));
    result << found.mid(spaces.size());
    while (result.size() > found.size() && result.last().isEmpty())
        result.removeLast();
    return result;
}

bool PagerNameSync::isEnabled() const {
    return settings_.projectNamesInPager();
}

void PagerNameSync::setEnabled(bool on) {
    if (on == isEnabled())
        return;
    if (on) {
        settings_.setPagerFoundNames(namer_.desktopNames());
        settings_.setProjectNamesInPager(true);
        sync();
        return;
    }
    namer_.setDesktopNames(settings_.pagerFoundNames());
    settings_.setProjectNamesInPager(false);
    settings_.setPagerFoundNames({});
}

void PagerNameSync::sync() {
    if (!isEnabled())
        return;
    const QList<CGSDisplay> displays = spaces_.displays();
    if (displays.isEmpty())
        return;
    QStringList spaces;
    for (const CGSSpace& space : displays.first().spaces)
        spaces << space.uuid;
    const QStringList wanted = names(spaces, projects_, settings_.pagerFoundNames());
    if (wanted != namer_.desktopNames())
        namer_.setDesktopNames(wanted);
}

} // namespace deskmark
