#include "Git/Commands/Repository/RefreshRepositoryDataGitCommand.h"

#include <QFile>
#include <algorithm>

#include "Extensions/FileModificationTime.h"
#include "Git/Commands/GitFlow/GetGitFlowSettingsGitCommand.h"
#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Git/Commands/Repository/GetCustomCommandsGitCommand.h"
#include "Git/Commands/Repository/RefreshRepositoryReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"
#include "Models/Bugtracker/GetBugtrackerDefinitions.h"
#include "Services/Preferences.h"

namespace {

const QString kCommand = QStringLiteral("RefreshRepositoryDataGitCommand");

// Starts and ends a named step on the progress.
class Step {
 public:
  Step(JobProgress& progress, QString name) : progress_(progress), name_(std::move(name)) { progress_.start(name_); }
  ~Step() { progress_.end(name_); }
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;

 private:
  JobProgress& progress_;
  QString name_;
};

bool sameRemotes(const std::vector<Remote>& a, const std::vector<Remote>& b) { return a == b; }

// The same rules (name, level, expression, link) in the same order.
bool sameBugtrackers(const BugtrackerCollection& a, const BugtrackerCollection& b) {
  return std::equal(a.bugtrackers.begin(), a.bugtrackers.end(), b.bugtrackers.begin(), b.bugtrackers.end(),
                    [](const BugtrackerLinkDefinitionPtr& x, const BugtrackerLinkDefinitionPtr& y) {
                      return x == y || (x && y && x->name == y->name && x->level == y->level && x->regexString == y->regexString &&
                                        x->urlString == y->urlString);
                    });
}

}  // namespace

bool RefreshRepositoryDataGitCommand::isGitLfsHook(const QByteArray& hook) { return hook.contains("git lfs pre-push"); }

GitResult<RepositoryDataPtr> RefreshRepositoryDataGitCommand::execute(const GitModule& module, const RepositoryDataPtr& old,
                                                                      Subdomain subdomains, Options options, JobProgress& progress) {
  progress.startGroup(kCommand);
  struct GroupEnd {
    JobProgress& progress;
    ~GroupEnd() { progress.endGroup(kCommand); }
  } groupEnd{progress};

  // A first read has nothing to hand on.
  const Subdomain wanted = old ? subdomains : Subdomain::all();
  auto data = std::make_shared<RepositoryData>();
  data->settings = GitModuleSettings::load(module);
  data->showReflogInRevisionList = options.showReflogInRevisionList;
  data->showFirstParent = options.showFirstParent;

  // Remotes: "config" holds them, so an untouched file is not read again.
  data->configUpdateTime = fileModificationTime(module.gitDirectoryPath(QStringLiteral("config")));
  const bool configUnchanged = old && data->configUpdateTime && data->configUpdateTime == old->configUpdateTime;
  if (old && (!wanted.contains(Subdomain::remotes()) || configUnchanged)) {
    data->remotes = old->remotes;
  } else {
    Step step(progress, QStringLiteral("GetRemotesGitCommand"));
    auto remotes = GetRemotesGitCommand::execute(module);
    if (!remotes) return remotes.mapError<RepositoryDataPtr>();
    data->remotes = std::move(remotes).value();
  }
  if (progress.isCanceled()) return Error::Canceled{};

  if (wanted.contains(Subdomain::bugTrackerSettings())) {
    Step step(progress, QStringLiteral("GetBugtrackerRules"));
    QStringList urls;
    for (const Remote& remote : data->remotes) urls << remote.repositoryUrl.rawUrlString;
    data->bugtrackers = GetBugtrackerDefinitions::execute(module, data->settings.showBugtrackerLinks, urls);
  } else {
    data->bugtrackers = old->bugtrackers;
  }

  if (wanted.contains(Subdomain::customCommands())) {
    Step step(progress, QStringLiteral("GetCustomCommands"));
    if (auto commands = GetCustomCommandsGitCommand::execute(module)) data->customCommands = std::move(commands).value();
  } else {
    data->customCommands = old->customCommands;
  }

  if (wanted.contains(Subdomain::stashes())) {
    Step step(progress, QStringLiteral("GetStashesGitCommand"));
    auto stashes = GetStashesGitCommand::execute(module);
    if (stashes) {
      data->stashes = std::move(stashes).value();
    } else {
      LOG_WARNING(QStringLiteral("Stashes failed: %1").arg(describe(stashes.error())));
      if (old) data->stashes = old->stashes;
    }
  } else {
    data->stashes = old->stashes;
  }
  if (progress.isCanceled()) return Error::Canceled{};

  data->topoOrder = Preferences::shared().useTopologicalCommitOrder();

  {
    Step step(progress, QStringLiteral("RefreshRepositoryReferencesGitCommand"));
    auto references =
        RefreshRepositoryReferencesGitCommand::execute(module, old ? &old->references : nullptr, wanted, data->settings, progress);
    if (!references) return references.mapError<RepositoryDataPtr>();
    data->references = std::move(references).value();
  }
  if (progress.isCanceled()) return Error::Canceled{};

  data->gitmodulesUpdateTime = fileModificationTime(module.repositoryPath + QStringLiteral("/.gitmodules"));
  const bool gitmodulesUnchanged = old && data->gitmodulesUpdateTime == old->gitmodulesUpdateTime;
  // Driven by the file's time, whatever the bits: an outside "git submodule add" is seen
  // at the next refresh.
  if (gitmodulesUnchanged) {
    data->submodules = old->submodules;
  } else {
    Step step(progress, QStringLiteral("GetSubmodulesGitCommand"));
    auto submodules = GetSubmodulesGitCommand::execute(module);
    if (submodules) {
      data->submodules = std::move(submodules).value();
    } else {
      LOG_WARNING(QStringLiteral("Submodules failed: %1").arg(describe(submodules.error())));
      if (old) data->submodules = old->submodules;
    }
  }

  // Likewise the config's time: an outside "git flow init" is seen at the next refresh.
  if (configUnchanged) {
    data->gitFlowSettings = old->gitFlowSettings;
  } else {
    Step step(progress, QStringLiteral("GetGitFlowSettingsGitCommand"));
    // A repository without Git Flow fails the read; that means no settings.
    auto flow = GetGitFlowSettingsGitCommand::execute(module);
    data->gitFlowSettings = flow ? flow.value() : std::nullopt;
  }
  if (progress.isCanceled()) return Error::Canceled{};

  const QString hookPath = module.gitDirectoryPath(QStringLiteral("hooks/pre-push"));
  data->gitLfsUpdateTime = fileModificationTime(hookPath);
  if (old && data->gitLfsUpdateTime == old->gitLfsUpdateTime) {
    data->gitLfsInitialized = old->gitLfsInitialized;
  } else if (data->gitLfsUpdateTime) {
    QFile hook(hookPath);
    data->gitLfsInitialized = hook.open(QIODevice::ReadOnly) && isGitLfsHook(hook.readAll());
  }

  const bool readHistory = !old || wanted.contains(Subdomain::revisions());
  if (old && !readHistory && data->references == old->references && sameStashes(data->stashes, old->stashes) &&
      sameRemotes(data->remotes, old->remotes) && data->submodules == old->submodules && data->settings == old->settings &&
      sameBugtrackers(data->bugtrackers, old->bugtrackers) &&
      sameCustomCommands(data->customCommands, old->customCommands) && data->gitFlowSettings == old->gitFlowSettings &&
      data->gitLfsInitialized == old->gitLfsInitialized && data->showReflogInRevisionList == old->showReflogInRevisionList &&
      data->showFirstParent == old->showFirstParent) {
    return Error::NoChanges{};
  }

  if (readHistory) {
    // An unborn HEAD ("git log HEAD" would fail) may stand beside other branches, whose
    // history is still shown; with no references at all there are no commits.
    const bool hasHead = data->references.head.has_value();
    if (hasHead || !data->references.all.empty()) {
      if (options.beforeHistory) options.beforeHistory(*data);
      Step step(progress, QStringLiteral("GetRevisionsGitCommand"));
      data->revisionLimit = options.maxCommitCount > 0 ? options.maxCommitCount : GetRevisionsGitCommand::maxCommitCount();
      auto revisions = GetRevisionsGitCommand::execute(module, data->topoOrder, data->showReflogInRevisionList, progress,
                                                       data->revisionLimit, hasHead);
      if (!revisions) return revisions.mapError<RepositoryDataPtr>();
      data->revisions = std::make_shared<const RevisionList>(std::move(revisions).value());
    }
  } else {
    data->revisions = old->revisions;
    data->topoOrder = old->topoOrder;
    data->revisionLimit = old->revisionLimit;
  }
  if (progress.isCanceled()) return Error::Canceled{};

  data->lastUpdateTime = QDateTime::currentDateTimeUtc();
  return RepositoryDataPtr(std::move(data));
}
