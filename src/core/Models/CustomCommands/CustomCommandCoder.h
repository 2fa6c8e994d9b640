#pragma once
// The JSON form of custom commands. Reading is tolerant: each element stands alone, a
// bad one is logged and left out, and the rest of the file stays usable.
#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

#include "Models/CustomCommands/CustomCommand.h"

namespace CustomCommandCoder {

// A file's bytes: the root must be an array; anything else gives an empty list.
// `ok` is false when the bytes are not JSON at all.
CustomCommandList decodeList(const QByteArray& json, bool shared, bool* ok = nullptr);
CustomCommandList decodeList(const QJsonArray& array, bool shared);
// One command object; nullptr when it does not convert.
CustomCommandPtr decode(const QJsonValue& value, bool shared);
CustomCommandActionPtr decodeAction(const QJsonValue& value);
std::shared_ptr<const CustomCommandUI> decodeUI(const QJsonValue& value);

QJsonObject encode(const CustomCommand& command);
QJsonObject encodeAction(const CustomCommandAction& action);
// Pretty-printed array, as the files are written.
QByteArray encodeList(const CustomCommandList& commands);

}  // namespace CustomCommandCoder
