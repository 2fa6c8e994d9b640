#include "Services/CustomCommandManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QSaveFile>
#include <QStandardPaths>

#include "Logging/AdvancedLogger.h"
#include "Models/CustomCommands/CustomCommandCoder.h"
#include "Services/Preferences.h"

namespace {

CustomCommandList importFromUserDefaults() {
  QJsonArray array;
  for (const QVariant& entry : Preferences::shared().customActions()) array.append(QJsonValue::fromVariant(entry));
  CustomCommandList commands;
  for (const QJsonValue& element : array) {
    if (auto command = CustomCommandCoder::decode(element, false)) commands.push_back(std::move(command));
  }
  return commands;
}

}  // namespace

CustomCommandManager& CustomCommandManager::shared() {
  static CustomCommandManager instance(globalURL());
  return instance;
}

CustomCommandManager::CustomCommandManager(std::optional<QString> globalPath) : globalPath_(std::move(globalPath)) {
  if (!globalPath_) return;
  if (QFileInfo::exists(*globalPath_)) {
    customCommands_ = load(*globalPath_, false);
    return;
  }
  LOG_INFO(QStringLiteral("Import custom actions from user defaults"));
  customCommands_ = importFromUserDefaults();
  save(customCommands_, globalPath_, true);
}

std::optional<QString> CustomCommandManager::globalURL() {
  const QString support = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  if (support.isEmpty()) {
    LOG_ERROR(QStringLiteral("Cannot find applicationSupportDirectory in userDomainMask"));
    return std::nullopt;
  }
  const QString folder = support + QStringLiteral("/org.jelv.Jelv");
  QDir().mkpath(folder);
  return folder + QStringLiteral("/custom-commands.json");
}

QString CustomCommandManager::sharedURL(const GitModule& module) {
  return QDir(module.repositoryPath).filePath(QStringLiteral(".jelv/custom-commands.json"));
}

QString CustomCommandManager::localURL(const GitModule& module) {
  return QDir(module.gitDirectoryUrl).filePath(QStringLiteral("jelv/custom-commands.json"));
}

CustomCommandList CustomCommandManager::load(const QString& path, bool shared) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  bool ok = false;
  CustomCommandList commands = CustomCommandCoder::decodeList(file.readAll(), shared, &ok);
  if (!ok) LOG_WARNING(QStringLiteral("Cannot load custom commands from '%1'").arg(path));
  return commands;
}

void CustomCommandManager::save(const CustomCommandList& commands, const std::optional<QString>& path, bool removeIfEmpty) {
  if (!path) {
    LOG_INFO(QStringLiteral("Saving custom commands"));
    return;
  }
  const QByteArray json = CustomCommandCoder::encodeList(commands);
  const QString failure = QStringLiteral("Cannot write custom commands to '%1'").arg(*path);
  if (removeIfEmpty && commands.empty()) {
    if (QFileInfo::exists(*path) && !QFile::remove(*path)) LOG_ERROR(failure);
    return;
  }
  QSaveFile file(*path);
  if (!QDir().mkpath(QFileInfo(*path).absolutePath()) || !file.open(QIODevice::WriteOnly) || file.write(json) != json.size() ||
      !file.commit()) {
    LOG_ERROR(failure);
  }
}

void CustomCommandManager::saveRepositoryCommands(const CustomCommandList& commands, const GitModule& module) {
  CustomCommandList local, shared;
  for (const auto& command : commands) (command->shared ? shared : local).push_back(command);
  save(local, localURL(module), true);
  save(shared, sharedURL(module), true);
}

CustomCommandList CustomCommandManager::customCommands() const {
  std::lock_guard lock(lock_);
  return customCommands_;
}

void CustomCommandManager::setCustomCommands(CustomCommandList commands) {
  {
    std::lock_guard lock(lock_);
    customCommands_ = commands;
  }
  save(commands, globalPath_, false);
}

CustomCommandList CustomCommandManager::commands(CustomCommand::Target target, const CustomCommandList& repositoryCommands,
                                                 std::optional<CustomCommand::ReferenceTarget> referenceKind) const {
  CustomCommandList result;
  auto take = [&](const CustomCommandList& list) {
    for (const auto& command : list) {
      if (command->target != target) continue;
      if (target == CustomCommand::Target::reference && referenceKind && !command->appliesTo(*referenceKind)) continue;
      result.push_back(command);
    }
  };
  take(customCommands());
  take(repositoryCommands);
  return result;
}
