#include "Models/CommitDraft.h"

#include "Models/GitModuleSettings.h"

namespace CommitDraft {

CommitMessage load(const GitModule& module) { return CommitMessage::fromText(GitModuleSettings::load(module).draftMessage); }

void save(const GitModule& module, const CommitMessage& draft) {
  GitModuleSettings settings = GitModuleSettings::load(module);
  const QString text = draft.text();
  if (settings.draftMessage == text) return;
  settings.draftMessage = text;
  settings.save(module);
}

void clear(const GitModule& module) { save(module, {}); }

}  // namespace CommitDraft
