#include "Models/CustomCommands/CustomCommandCoder.h"

#include <QJsonDocument>

#include "Logging/AdvancedLogger.h"

namespace CustomCommandCoder {

namespace {

std::optional<QString> stringOf(const QJsonObject& object, const char* key) {
  const QJsonValue v = object.value(QLatin1String(key));
  if (!v.isString()) return std::nullopt;
  return v.toString();
}

std::optional<bool> boolOf(const QJsonObject& object, const char* key) {
  const QJsonValue v = object.value(QLatin1String(key));
  if (!v.isBool()) return std::nullopt;
  return v.toBool();
}

}  // namespace

CustomCommandActionPtr decodeAction(const QJsonValue& value) {
  const QJsonObject object = value.toObject();
  const auto type = stringOf(object, "type");
  if (!type) return nullptr;
  if (*type == QLatin1String("process")) {
    const auto path = stringOf(object, "path");
    const auto args = stringOf(object, "args");
    const auto showOutput = boolOf(object, "showOutput");
    const auto waitForExit = boolOf(object, "waitForExit");
    if (!path || !args || !showOutput || !waitForExit) return nullptr;
    return std::make_shared<ProcessCustomCommandAction>(*path, *args, *showOutput, *waitForExit);
  }
  if (*type == QLatin1String("url")) {
    const auto url = stringOf(object, "url");
    if (!url) return nullptr;
    return std::make_shared<UrlCustomCommandAction>(*url);
  }
  if (*type == QLatin1String("cancel")) return std::make_shared<CancelCustomCommandAction>();
  LOG_WARNING(QStringLiteral("Cannot parse custom command action"));
  return nullptr;
}

std::shared_ptr<const CustomCommandUI> decodeUI(const QJsonValue& value) {
  const QJsonObject object = value.toObject();
  const auto title = stringOf(object, "title");
  const auto description = stringOf(object, "description");
  const QJsonValue buttons = object.value(QStringLiteral("buttons"));
  if (!title || !description || !buttons.isArray()) return nullptr;
  auto ui = std::make_shared<CustomCommandUI>();
  ui->title = *title;
  ui->description = *description;
  for (const QJsonValue& element : buttons.toArray()) {
    const QJsonObject button = element.toObject();
    const auto buttonTitle = stringOf(button, "title");
    if (!buttonTitle || !button.value(QStringLiteral("action")).isObject()) continue;
    auto action = decodeAction(button.value(QStringLiteral("action")));
    if (!action) continue;  // the button drops out, the dialog stays
    ui->buttons.push_back({*buttonTitle, std::move(action)});
  }
  return ui;
}

CustomCommandPtr decode(const QJsonValue& value, bool shared) {
  if (!value.isObject()) return nullptr;
  const QJsonObject object = value.toObject();
  const auto targetText = stringOf(object, "target");
  const auto target = targetText ? CustomCommand::targetFromJson(*targetText) : std::nullopt;
  if (!target) return nullptr;
  const auto name = stringOf(object, "name");
  if (!name) return nullptr;

  auto command = std::make_shared<CustomCommand>();
  command->target = *target;
  command->name = *name;
  command->shared = shared;
  const QJsonValue referenceTargets = object.value(QStringLiteral("referenceTargets"));
  if (referenceTargets.isArray()) {
    std::vector<CustomCommand::ReferenceTarget> kinds;
    for (const QJsonValue& element : referenceTargets.toArray()) {
      if (auto kind = CustomCommand::referenceTargetFromJson(element.toString())) kinds.push_back(*kind);
    }
    command->referenceTargets = std::move(kinds);
  }
  if (object.value(QStringLiteral("action")).isObject()) command->action = decodeAction(object.value(QStringLiteral("action")));
  if (object.value(QStringLiteral("ui")).isObject()) command->ui = decodeUI(object.value(QStringLiteral("ui")));
  if (!command->action && !command->ui) {
    LOG_WARNING(QStringLiteral("Custom command can't be parsed. Either action or ui must be defined."));
    return nullptr;
  }
  return command;
}

CustomCommandList decodeList(const QJsonArray& array, bool shared) {
  CustomCommandList commands;
  for (const QJsonValue& element : array) {
    if (auto command = decode(element, shared)) {
      commands.push_back(std::move(command));
    } else {
      LOG_WARNING(QStringLiteral("Custom command can't be parsed and will be skipped"));
    }
  }
  return commands;
}

CustomCommandList decodeList(const QByteArray& json, bool shared, bool* ok) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(json, &error);
  if (ok) *ok = error.error == QJsonParseError::NoError;
  if (!document.isArray()) return {};
  return decodeList(document.array(), shared);
}

QJsonObject encodeAction(const CustomCommandAction& action) {
  switch (action.type()) {
    case CustomCommandAction::Type::process: {
      const auto& process = static_cast<const ProcessCustomCommandAction&>(action);
      return QJsonObject{{QStringLiteral("type"), QStringLiteral("process")},
                         {QStringLiteral("path"), process.path},
                         {QStringLiteral("args"), process.parameters},
                         {QStringLiteral("showOutput"), process.showOutput},
                         {QStringLiteral("waitForExit"), process.waitForExit}};
    }
    case CustomCommandAction::Type::url:
      return QJsonObject{{QStringLiteral("type"), QStringLiteral("url")},
                         {QStringLiteral("url"), static_cast<const UrlCustomCommandAction&>(action).url}};
    case CustomCommandAction::Type::cancel: return QJsonObject{{QStringLiteral("type"), QStringLiteral("cancel")}};
  }
  return {};
}

QJsonObject encode(const CustomCommand& command) {
  QJsonObject object{{QStringLiteral("target"), CustomCommand::jsonValue(command.target)},
                     {QStringLiteral("name"), command.name}};
  if (command.target == CustomCommand::Target::reference && command.referenceTargets) {
    QJsonArray kinds;
    for (auto kind : *command.referenceTargets) kinds.append(CustomCommand::jsonValue(kind));
    object.insert(QStringLiteral("referenceTargets"), kinds);
  }
  if (command.action) object.insert(QStringLiteral("action"), encodeAction(*command.action));
  if (command.ui) {
    QJsonArray buttons;
    for (const auto& button : command.ui->buttons) {
      if (!button.action) continue;
      buttons.append(QJsonObject{{QStringLiteral("title"), button.title}, {QStringLiteral("action"), encodeAction(*button.action)}});
    }
    object.insert(QStringLiteral("ui"), QJsonObject{{QStringLiteral("title"), command.ui->title},
                                                    {QStringLiteral("description"), command.ui->description},
                                                    {QStringLiteral("buttons"), buttons}});
  }
  return object;
}

QByteArray encodeList(const CustomCommandList& commands) {
  QJsonArray array;
  for (const auto& command : commands) {
    // A command that would not read back is left out rather than written broken.
    if (!command || (!command->action && !command->ui)) {
      LOG_ERROR(QStringLiteral("Cannot encode CustomCommand to JSON."));
      continue;
    }
    array.append(encode(*command));
  }
  return QJsonDocument(array).toJson(QJsonDocument::Indented);
}

}  // namespace CustomCommandCoder
