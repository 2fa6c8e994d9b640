#pragma once
// The system-wide error value and the result type of every Git command.
#include <QString>
#include <utility>
#include <variant>

#include "Models/GitModule.h"

namespace Error {
struct GitWorkingDirectoryNotExists { QString directory; bool operator==(const GitWorkingDirectoryNotExists&) const = default; };
struct GitUnknownError { QString output; QString error; bool operator==(const GitUnknownError&) const = default; };
struct TagMismatch { QString output; QString error; GitModule gitModule; QString remote; bool operator==(const TagMismatch&) const = default; };
struct GitCommitFailed { GitModule gitModule; QString message; bool amend = false; QString error; bool operator==(const GitCommitFailed&) const = default; };
struct LaunchPathIsNotExecutable { QString path; bool operator==(const LaunchPathIsNotExecutable&) const = default; };
struct ConnectionError { QString error; bool operator==(const ConnectionError&) const = default; };
struct CannotParse { QString error; bool operator==(const CannotParse&) const = default; };
struct BranchNotFullyMerged { QString error; bool operator==(const BranchNotFullyMerged&) const = default; };
struct RepositoryIsLocked { QString error; bool operator==(const RepositoryIsLocked&) const = default; };
struct Generic { QString text; bool operator==(const Generic&) const = default; };
struct CannotReachHere { QString error; bool operator==(const CannotReachHere&) const = default; };
struct UnknownException { QString error; bool operator==(const UnknownException&) const = default; };
struct GitCannotEncodeOutput { bool operator==(const GitCannotEncodeOutput&) const = default; };
struct NotFound { bool operator==(const NotFound&) const = default; };
struct Canceled { bool operator==(const Canceled&) const = default; };
struct NoChanges { bool operator==(const NoChanges&) const = default; };
struct Unknown { bool operator==(const Unknown&) const = default; };
}  // namespace Error

using ResultError = std::variant<Error::GitWorkingDirectoryNotExists, Error::GitUnknownError, Error::TagMismatch,
                                 Error::GitCommitFailed, Error::LaunchPathIsNotExecutable, Error::ConnectionError,
                                 Error::CannotParse, Error::BranchNotFullyMerged, Error::RepositoryIsLocked,
                                 Error::Generic, Error::CannotReachHere, Error::UnknownException,
                                 Error::GitCannotEncodeOutput, Error::NotFound, Error::Canceled, Error::NoChanges,
                                 Error::Unknown>;

// A short text for logs and simple messages; the error sheet has its own wording.
QString describe(const ResultError& error);

// The value of a command without a result.
struct Unit {
  bool operator==(const Unit&) const = default;
};

template <typename T>
class GitResult {
 public:
  GitResult(T value) : storage_(std::in_place_index<0>, std::move(value)) {}
  GitResult(ResultError error) : storage_(std::in_place_index<1>, std::move(error)) {}
  template <typename E, typename = std::enable_if_t<std::is_constructible_v<ResultError, E> && !std::is_same_v<std::decay_t<E>, T> &&
                                                    !std::is_same_v<std::decay_t<E>, ResultError>>>
  GitResult(E error) : storage_(std::in_place_index<1>, ResultError(std::move(error))) {}

  static GitResult success(T value) { return GitResult(std::move(value)); }
  static GitResult failure(ResultError error) { return GitResult(std::move(error)); }

  bool isSuccess() const { return storage_.index() == 0; }
  bool isFailure() const { return storage_.index() == 1; }
  explicit operator bool() const { return isSuccess(); }

  const T& value() const& { return std::get<0>(storage_); }
  T& value() & { return std::get<0>(storage_); }
  T&& value() && { return std::get<0>(std::move(storage_)); }
  const ResultError& error() const { return std::get<1>(storage_); }

  template <typename E>
  bool isError() const { return isFailure() && std::holds_alternative<E>(error()); }
  template <typename E>
  const E* errorAs() const { return isFailure() ? std::get_if<E>(&std::get<1>(storage_)) : nullptr; }

  // Carries a failure over to a result of another type.
  template <typename U>
  GitResult<U> mapError() const { return GitResult<U>(error()); }

 private:
  std::variant<T, ResultError> storage_;
};

using GitVoidResult = GitResult<Unit>;
