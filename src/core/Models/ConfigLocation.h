#pragma once

// Which configuration file a config read or write addresses.
enum class ConfigLocation { local, global };
