#include "Graph/RevisionListDisplay.h"

#include <QSet>

namespace RevisionListDisplay {

RevisionGraphOptions options(const GitModuleSettings& settings, bool showFirstParent) {
  RevisionGraphOptions options;
  options.hideStashes = settings.hideStashes;
  options.hideRemoteBranches = settings.hideRemoteBranches;
  options.hideTags = settings.hideTags;
  options.showFirstParent = showFirstParent;
  return options;
}

std::shared_ptr<const RevisionGraphSource> reshaped(const RevisionGraphSource& source, const GitModuleSettings& settings,
                                                    bool showFirstParent) {
  auto copy = std::make_shared<RevisionGraphSource>(source);
  copy->options = options(settings, showFirstParent);
  copy->references.filtered = QSet<QString>(settings.filterReferences.begin(), settings.filterReferences.end());
  copy->references.starred = QSet<QString>(settings.starredReferences.begin(), settings.starredReferences.end());
  return copy;
}

QStringList withReference(QStringList references, const QString& fullReference, bool present) {
  references.removeAll(fullReference);
  if (present) references << fullReference;
  return references;
}

GitModuleSettings update(const GitModule& module, const std::function<void(GitModuleSettings&)>& change) {
  // No cache: the file may have been written by another tab since it was last read.
  GitModuleSettings settings = GitModuleSettings::load(module);
  change(settings);
  settings.save(module);
  return settings;
}

}  // namespace RevisionListDisplay
