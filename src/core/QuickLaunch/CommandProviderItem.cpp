#include "QuickLaunch/CommandProviderItem.h"

#include <QFileInfo>

#include "Extensions/Overloaded.h"

namespace {

QString referenceKind(const Reference& reference) {
  switch (reference.kind()) {
    case Reference::Kind::localBranch: return QStringLiteral("Branch");
    case Reference::Kind::remoteBranch: return QStringLiteral("Remote branch");
    case Reference::Kind::tag: return QStringLiteral("Tag");
    default: return QStringLiteral("Reference");
  }
}
}  // namespace

QString CommandProviderItems::title(const CommandProviderItem& item) {
  return std::visit(Overloaded{[](const HeaderCommandProviderItem& header) { return header.commandTitle; },
                               [](const RepositoryRecordPtr& repository) { return repository ? repository->name : QString(); },
                               [](const QuickLaunchCommand& command) { return command.name; },
                               // "origin/main" for a remote branch: the remote tells two apart.
                               [](const ReferencePtr& reference) { return reference ? reference->fullName : QString(); },
                               [](const RepositoryFile& file) { return QFileInfo(file.path).fileName(); }},
                    item);
}

QString CommandProviderItems::secondaryText(const CommandProviderItem& item) {
  return std::visit(Overloaded{[](const HeaderCommandProviderItem&) { return QString(); },
                               [](const RepositoryRecordPtr& repository) { return repository ? repository->repositoryPath : QString(); },
                               [](const QuickLaunchCommand& command) { return command.detail; },
                               [](const ReferencePtr& reference) {
                                 return reference ? referenceKind(*reference) + QStringLiteral(" · ") + reference->sha.left(7) : QString();
                               },
                               [](const RepositoryFile& file) {
                                 const qsizetype slash = file.path.lastIndexOf(QLatin1Char('/'));
                                 return slash < 0 ? QString() : file.path.left(slash);
                               }},
                    item);
}

QString CommandProviderItems::matchText(const CommandProviderItem& item) {
  // A file is found by its whole path: the folders are part of what people type.
  if (const auto* file = std::get_if<RepositoryFile>(&item)) return file->path;
  return title(item);
}
