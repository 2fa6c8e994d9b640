#include "Models/CustomCommands/CustomCommandEnvironment.h"

#include <QFileInfo>
#include <QUrl>

namespace {

QString shortSha(const QString& sha) { return sha.left(7); }

}  // namespace

QString CustomCommandEnvironment::substitute(QString text, const QString& variable, const QString& value, bool urlEncode) {
  if (!text.contains(variable)) return text;
  // Every byte but ASCII letters and digits is encoded: "-", ".", "_" and "~" too.
  const QString replacement = urlEncode ? QString::fromLatin1(QUrl::toPercentEncoding(value, {}, "-._~")) : value;
  return text.replace(variable, replacement);
}

QString CustomCommandEnvironment::replace(const QString& text, bool urlEncode) const {
  const QString name = QFileInfo(gitModule.repositoryPath).fileName();
  QString result = substitute(text, QStringLiteral("$path"), gitModule.repositoryPath, urlEncode);
  result = substitute(result, QStringLiteral("$repository"), name, urlEncode);
  result = substitute(result, QStringLiteral("$reponame"), name, urlEncode);
  return substitute(result, QStringLiteral("$git"), gitPath, urlEncode);
}

QString RevisionCustomCommandEnvironment::replace(const QString& text, bool urlEncode) const {
  QString result = substitute(text, QStringLiteral("$SHA"), sha, urlEncode);
  result = substitute(result, QStringLiteral("$sha"), shortSha(sha), urlEncode);
  return CustomCommandEnvironment::replace(result, urlEncode);
}

QString FileCustomCommandEnvironment::replace(const QString& text, bool urlEncode) const {
  QString result = substitute(text, QStringLiteral("$filepath"), filepath, false);
  result = substitute(result, QStringLiteral("$filename"), filename, false);
  if (sha) {
    result = substitute(result, QStringLiteral("$SHA"), *sha, false);
    result = substitute(result, QStringLiteral("$sha"), shortSha(*sha), false);
  }
  return CustomCommandEnvironment::replace(result, urlEncode);
}

QString RefCustomCommandEnvironment::replace(const QString& text, bool urlEncode) const {
  QString result = text;
  if (reference) {
    // `fullName` keeps the remote ("origin/main"), `name` drops it ("main").
    result = substitute(result, QStringLiteral("$SHA"), reference->sha, urlEncode);
    result = substitute(result, QStringLiteral("$sha"), shortSha(reference->sha), urlEncode);
    result = substitute(result, QStringLiteral("$name"), reference->fullName, urlEncode);
    result = substitute(result, QStringLiteral("$fullreference"), reference->fullReference, urlEncode);
    result = substitute(result, QStringLiteral("$shortname"), reference->name, urlEncode);
  }
  return CustomCommandEnvironment::replace(result, urlEncode);
}

QString CustomCommandEnvironment::availableVariables(CustomCommand::Target target) {
  const QString head = QStringLiteral("$git\t\t\t git path\n$path\t\t repository path\n");
  switch (target) {
    case CustomCommand::Target::repository: return head + QStringLiteral("$reponame\t repository name");
    case CustomCommand::Target::revision:
      return head + QStringLiteral("$reponame\t repository name\n$SHA\t\t commit sha\n$sha\t\t\t commit abbreviated sha");
    case CustomCommand::Target::file:
      return head + QStringLiteral(
                        "$reponame\t repository name\n$filename\t\t file name\n$filepath\t\t file path\n$SHA\t\t commit sha\n$sha\t\t\t commit "
                        "abbreviated sha");
    case CustomCommand::Target::reference:
      return head + QStringLiteral(
                        "$reponame\t repository name\n$SHA\t\t branch sha\n$sha\t\t\t branch abbreviated sha\n$shortname\t branch short "
                        "name\n$name\t\t branch name\n$fullreference\t branch full reference");
  }
  return head;
}
