#pragma once
// How the user has shaped one repository's commit list: stars and the branch filter,
// hidden tags, remote branches and stashes live in the repository's settings file;
// first-parent mode is the open tab's own flag. Re-shaping copies the graph source with
// new sets and options but shares the loaded history, so nothing is read again.
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "Graph/RevisionGraphSource.h"
#include "Models/GitModule.h"
#include "Models/GitModuleSettings.h"

namespace RevisionListDisplay {

RevisionGraphOptions options(const GitModuleSettings& settings, bool showFirstParent);

// The source with the settings' starred and filtered sets and display options.
std::shared_ptr<const RevisionGraphSource> reshaped(const RevisionGraphSource& source, const GitModuleSettings& settings,
                                                    bool showFirstParent);

// Adds or removes one full reference, keeping the others in their order.
QStringList withReference(QStringList references, const QString& fullReference, bool present);

// Loads the repository's settings, changes a copy, saves it and gives the saved value.
GitModuleSettings update(const GitModule& module, const std::function<void(GitModuleSettings&)>& change);

}  // namespace RevisionListDisplay
