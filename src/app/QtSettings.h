#pragma once

#include "platform/Settings.h"

#include <QSettings>
#include <QVariant>

#include <map>
#include <string>

namespace veltrano {

/// Settings in an ini file, one line for each key. Written when the main loop next has time, at `synchronize`
/// and at the end. Made on the main thread and lives as long as the program; main thread.
///
/// The file holds text only: a number or a truth value answers as a string too, and an array of one string is
/// not told apart from that string. Strings stand there as they read where they are UTF-8, and in a form that
/// keeps every byte where they are not.
///
/// A file that can't be read in full is damaged. What can be read of it counts, and before anything is
/// written a copy of it is put beside it as NAME.damaged (NAME.damaged-2 and so on); while no copy can be
/// made the file stays as it is, and what was set holds for this run only. A file that may not be read or
/// written is left alone likewise.
class QtSettings final : public Settings {
public:
    /// The absolute path of the file, bytes; neither it nor its folder need exist.
    explicit QtSettings(const std::string& file);

    std::optional<bool> boolForKey(std::string_view key) const override;
    std::optional<std::int64_t> integerForKey(std::string_view key) const override;
    std::optional<double> doubleForKey(std::string_view key) const override;
    std::optional<std::string> stringForKey(std::string_view key) const override;
    std::optional<std::vector<std::string>> arrayForKey(std::string_view key) const override;

    void setBool(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setDouble(std::string_view key, double value) override;
    void setString(std::string_view key, std::string_view value) override;
    void setArray(std::string_view key, const std::vector<std::string>& value) override;
    void remove(std::string_view key) override;

    [[nodiscard]] bool synchronize() override;

private:
    /// A value as it stands in the file. An invalid one that is there is an empty array.
    struct Stored {
        bool isThere = false;
        QVariant value{};
    };

    Stored storedValue(std::string_view key) const;
    std::optional<QString> textForKey(std::string_view key) const;
    void store(std::string_view key, const Stored& stored);
    void writeThrough(const QString& key, const Stored& stored);
    bool mayBeWritten();
    bool keepDamagedFile();

    const QString m_path;
    const bool m_bPathIsText; // else the file system would be asked for another path
    QSettings m_settings;
    bool m_bDamaged = false;                // the file holds what would be lost by writing, and has no copy
    std::map<QString, Stored> m_heldBack{}; // set while the file must not be written
};

} // namespace veltrano
