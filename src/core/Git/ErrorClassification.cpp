#include "Git/ErrorClassification.h"

bool ErrorClassification::isRepositoryLocked(const QString& error) {
  return error.startsWith(u"fatal: Unable to create") && error.contains(u"index.lock': File exists.");
}

ResultError ErrorClassification::classify(const QString& output, const QString& error) {
  if (isRepositoryLocked(error)) return Error::RepositoryIsLocked{error};
  return Error::GitUnknownError{output, error};
}
