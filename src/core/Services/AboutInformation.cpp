#include "Services/AboutInformation.h"

#include "Git/Commands/Config/GetGitVersionGitCommand.h"
#include "Services/Preferences.h"

#ifndef JELV_VERSION
#define JELV_VERSION "unknown"
#endif

QString AboutInformation::applicationVersion() { return QStringLiteral(JELV_VERSION); }

std::vector<AboutInformation::Library> AboutInformation::libraries() {
  std::vector<Library> libraries{
      {QStringLiteral("Qt 6"), QStringLiteral("GNU Lesser General Public License v3")},
      {QStringLiteral("SQLite"), QStringLiteral("Public domain")},
      {QStringLiteral("spdlog"), QStringLiteral("MIT License")},
      {QStringLiteral("{fmt}"), QStringLiteral("MIT License")},
  };
  // The optional ones as the build found them.
#ifdef JELV_HAVE_LIBSECRET
  libraries.push_back({QStringLiteral("libsecret"), QStringLiteral("GNU Lesser General Public License v2.1")});
#endif
#ifdef JELV_HAVE_CMARK
  libraries.push_back({QStringLiteral("cmark"), QStringLiteral("BSD 2-Clause License")});
#endif
#ifdef JELV_HAVE_HUNSPELL
  libraries.push_back({QStringLiteral("Hunspell"), QStringLiteral("Mozilla Public License 1.1, GPL 2.0 or LGPL 2.1")});
#endif
  return libraries;
}

QString AboutInformation::gitVersionLine() {
  const GitInstanceType instance = Preferences::shared().gitInstance();
  const GitResult<QString> version = GetGitVersionGitCommand::execute(instance);
  if (!version) return QStringLiteral("git cannot be run (%1): %2").arg(instance.launchPath(), describe(version.error()));
  return QStringLiteral("git %1 (%2)").arg(version.value(), instance.launchPath());
}
