#pragma once

class QSettings;

/// Brings changed settings to their file, which is whole or stays as it was; a notice
/// tells where that fails.
///
/// The toolkit replaces a settings file without a look at its last flush: on a disk that
/// has filled up the new one is cut off or empty, and all settings are lost.
void storeSettings(QSettings &settings) noexcept;
