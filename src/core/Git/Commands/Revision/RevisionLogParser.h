#pragma once
// The state machine that turns the records of "git log" into revisions, one line at a
// time, so that a history of any length is read without holding git's output. A record
// is seven lines (sha, tree, parents, author, e-mail, author time, subject), or eight
// for the stash list (the reflog name before the subject).
#include <QByteArray>
#include <QByteArrayView>
#include <optional>
#include <vector>

#include "Git/ResultError.h"
#include "Models/IdentityInterner.h"
#include "Models/Revision.h"
#include "Models/StashRevision.h"

class Cancelable;

class RevisionLogParser {
 public:
  enum class Format { revisions, stashes };

  // With a cancellation source, the revisions format tests it once every 50 records.
  explicit RevisionLogParser(Format format, const Cancelable* cancelation = nullptr);

  // Takes the next line. A failure ends the read; the caller stops feeding. A record
  // with an object name that isn't hex is logged and dropped.
  std::optional<ResultError> consume(QByteArrayView line);
  // The output ended. git prints nothing for an empty subject of the last record, so a
  // record that lacks only its subject is completed; anything shorter is dropped.
  void finish();

  RevisionList takeRevisions();
  StashRevisionList takeStashes();
  size_t count() const { return format_ == Format::revisions ? revisions_.size() : stashes_.size(); }

  // Feeds a whole output, split at line feeds as the stream reader does.
  static GitResult<RevisionList> parseRevisions(const QByteArray& output);
  static GitResult<StashRevisionList> parseStashes(const QByteArray& output);

  // Shared with RevisionParser. Parents: exactly 40 bytes is one sha without a split;
  // empty is none; otherwise blank-separated. Gives false for a name that isn't hex.
  static bool parseParents(QByteArrayView line, bool firstOnly, std::vector<Sha>& out);
  // UTF-8 as it stands; other bytes are read as ISO Latin 1, like all of git's output.
  static CompactText subjectText(QByteArrayView line);

 private:
  std::optional<ResultError> appendRecord(QByteArrayView subject);
  void rejectRecord(QByteArrayView line);

  Format format_;
  const Cancelable* cancelation_;
  int part_ = 0;
  bool recordIsValid_ = true;
  Sha sha_;
  Sha tree_;
  std::vector<Sha> parents_;
  QByteArray authorName_;
  QByteArray authorEmail_;
  qint64 authorTime_ = 0;
  QString reflogName_;
  IdentityInterner interner_;
  RevisionList revisions_;
  StashRevisionList stashes_;
};
