#pragma once
// The URLs the desktop hands over through the two registered schemes: one brings a
// repository to the front (or opens it), the other starts a clone with a given URL.
#include <QString>

struct ApplicationUrl {
  enum class Kind { openRepository, cloneRepository, unknown };
  Kind kind = Kind::unknown;
  // The repository's path or URL for openRepository (as given), the percent-decoded
  // clone URL for cloneRepository.
  QString target;

  bool operator==(const ApplicationUrl&) const = default;

  static ApplicationUrl parse(const QString& url);
  // Whether two remote URLs name the same repository: same host, owner and name, with
  // protocol, user name, ".git" and letter case set aside.
  static bool sameRepository(const QString& first, const QString& second);

  // Whether a command-line argument is a URL of one of the schemes rather than a folder.
  static bool hasApplicationScheme(const QString& argument);

  static constexpr const char* openRepositoryPrefix = "github-mac://openRepo/";
  static constexpr const char* cloneRepositoryPrefix = "sourcetree://cloneRepo?cloneUrl=";
  static constexpr const char* schemes[] = {"github-mac", "sourcetree"};
};
