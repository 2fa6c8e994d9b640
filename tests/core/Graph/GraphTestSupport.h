#pragma once
// Small histories written as text ("M: A B" = commit M with parents A and B, children
// first) and the graph they produce drawn as a text picture.
#include <QCryptographicHash>
#include <QHash>
#include <QStringList>
#include <memory>

#include "Graph/GraphManager.h"
#include "Graph/RevisionGraph.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/StashRevision.h"
#include "Models/Tag.h"

namespace GraphTest {

inline QString hexFor(const QString& name) {
  return QString::fromLatin1(QCryptographicHash::hash(name.toUtf8(), QCryptographicHash::Sha1).toHex());
}
inline Sha shaFor(const QString& name) { return *Sha::fromHex(QStringView(hexFor(name))); }

class History {
 public:
  // One commit a line: "NAME: PARENT PARENT ..."; a root has nothing after the colon.
  explicit History(const QString& text) {
    for (const QString& raw : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
      const QString line = raw.trimmed();
      if (line.isEmpty()) continue;
      const QString name = line.section(QLatin1Char(':'), 0, 0).trimmed();
      QStringList parents;
      for (const QString& parent : line.section(QLatin1Char(':'), 1).split(QLatin1Char(' '), Qt::SkipEmptyParts))
        parents.append(hexFor(parent));
      add(name, parents);
    }
  }
  History() = default;

  void add(const QString& name, const QStringList& parentHexes) {
    revisions.push_back(
        Revision::create(hexFor(name), QString(), parentHexes, name, "A U Thor", "author@example.com", 1700000000));
    names.insert(shaFor(name), name);
  }

  // A stash made on `parent`.
  void addStash(const QString& name, const QString& parent) {
    stashes.push_back(std::make_shared<const StashRevision>(shaFor(name), Sha(), ParentShas(shaFor(parent)),
                                                            CompactText::fromText(name), nullptr, 1700000000,
                                                            QStringLiteral("stash@{%1}").arg(stashes.size())));
    names.insert(shaFor(name), name);
  }

  void addBranch(const QString& branch, const QString& at, bool active = false, std::optional<QString> upstream = {}) {
    references.push_back(std::make_shared<const LocalBranch>(hexFor(at), "refs/heads/" + branch, branch, branch, QDateTime(),
                                                             active, std::move(upstream)));
    if (active) head = hexFor(at);
  }
  void addRemoteBranch(const QString& remote, const QString& branch, const QString& at) {
    const QString fullName = remote + QLatin1Char('/') + branch;
    references.push_back(
        std::make_shared<const RemoteBranch>(hexFor(at), "refs/remotes/" + fullName, branch, fullName, QDateTime(), remote));
  }
  // An annotated tag names its own object; the commit is behind it.
  void addTag(const QString& tag, const QString& at, bool annotated = false) {
    const QString object = annotated ? hexFor("tag object " + tag) : hexFor(at);
    references.push_back(std::make_shared<const Tag>(object, "refs/tags/" + tag, tag, tag, QDateTime(),
                                                     annotated ? std::optional<QString>(hexFor(at)) : std::nullopt));
  }
  void detachHead(const QString& at) { head = hexFor(at); }

  std::shared_ptr<const RevisionGraphSource> source(RevisionGraphOptions options = {}, QSet<QString> filtered = {}) const {
    auto source = std::make_shared<RevisionGraphSource>();
    source->revisions = std::make_shared<const RevisionList>(revisions);
    source->stashes = stashes;
    source->references = RepositoryReferences::make(head, std::nullopt, references, std::move(filtered));
    source->options = options;
    return source;
  }

  QString nameOf(const Sha& sha) const { return names.value(sha, "?"); }
  QStringList rowNames(const RevisionGraph& graph) const {
    QStringList result;
    for (const RevisionPtr& revision : graph.revisions()) result.append(nameOf(revision->sha()));
    return result;
  }

  RevisionList revisions;
  StashRevisionList stashes;
  ReferenceList references;
  std::optional<QString> head;
  QHash<Sha, QString> names;
};

// The graph drawn like a terminal log: a line per row with '*' for the commit and '|'
// for lanes passing by, and between rows a line of '/', '\' and '_' wherever lanes move
// to another column (left out when all go straight down). Behind each row stand the
// commit's name and its lines exactly, as id(top,middle,bottom) with '-' for none.
QString picture(const History& history, const RevisionGraph& graph, GraphManager& manager);

}  // namespace GraphTest
