#pragma once
#include <QString>

// Paths of the resources staged beside the executable (or installed to share/jelv),
// resolved once.
namespace Consts {
QString resourcesDirectory();
// Overrides the lookup; for tests and tools that run from unusual places.
void setResourcesDirectory(const QString& path);

namespace Git {
QString localGitPath();    // resources/git-instance/bin/git
QString askPassPath();     // resources/jelv_askpasswd
QString gitLfsDirectory(); // resources/git-instance/git-lfs
QString gitFlowDirectory();// resources/gitflow-avh
QString gpgWrapperPath();  // resources/gpg.sh, what gpg.program names for signed commits
QString rebaseEditorPath(); // resources/jelv_ri, the editor of interactive rebases
// The empty tree's object name: the "parent" of a root commit in diffs.
inline const QString emptyTreeSha = QStringLiteral("4b825dc642cb6eb9a060e54bf8d69288fbee4904");
}  // namespace Git

// Git Flow's keys in the repository's config.
namespace GitFlow {
inline const QString masterBranch = QStringLiteral("gitflow.branch.master");
inline const QString developBranch = QStringLiteral("gitflow.branch.develop");
inline const QString featurePrefix = QStringLiteral("gitflow.prefix.feature");
inline const QString releasePrefix = QStringLiteral("gitflow.prefix.release");
inline const QString hotfixPrefix = QStringLiteral("gitflow.prefix.hotfix");
inline const QString versionTag = QStringLiteral("gitflow.prefix.versiontag");
// Only written, by the initialisation.
inline const QString bugfixPrefix = QStringLiteral("gitflow.prefix.bugfix");
inline const QString supportPrefix = QStringLiteral("gitflow.prefix.support");
inline const QString hooksPath = QStringLiteral("gitflow.path.hooks");
}  // namespace GitFlow

QString applicationDataDirectory();  // <data>/org.jelv.Jelv
}  // namespace Consts
