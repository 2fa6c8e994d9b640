#pragma once
// A name that points at a commit. Objects are made once by the reference reader and
// then shared read-only (std::shared_ptr<const ...>); a refresh builds new ones.
#include <QDateTime>
#include <QString>
#include <memory>
#include <vector>

class Reference {
 public:
  enum class Kind { localBranch, remoteBranch, tag, head, bisectMark, plain };

  Reference(QString sha, QString fullReference, QString name, QString fullName, QDateTime committerDate)
      : sha(std::move(sha)), fullReference(std::move(fullReference)), name(std::move(name)),
        fullName(std::move(fullName)), committerDate(std::move(committerDate)) {}
  virtual ~Reference() = default;

  virtual Kind kind() const = 0;

  QString sha;            // the object the reference points at
  QString fullReference;  // "refs/heads/dev/x"
  QString name;           // shown name: no namespace, and for a remote branch no remote
  QString fullName;       // behind the namespace, with the remote for a remote branch
  QDateTime committerDate;

  // Same class and same fields.
  bool operator==(const Reference& other) const {
    return kind() == other.kind() && sha == other.sha && fullReference == other.fullReference && name == other.name &&
           fullName == other.fullName && committerDate == other.committerDate && sameDetails(other);
  }

 protected:
  // Compares the fields of the derived class; `other` has the same kind.
  virtual bool sameDetails(const Reference&) const { return true; }
};

using ReferencePtr = std::shared_ptr<const Reference>;
using ReferenceList = std::vector<ReferencePtr>;

// Element-wise equality of the references, not of the pointers.
inline bool sameReferences(const ReferenceList& a, const ReferenceList& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && (!a[i] || !b[i] || !(*a[i] == *b[i]))) return false;
  }
  return true;
}
