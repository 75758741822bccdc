#pragma once

#include "appearance/PathColntrolCell.h"

#include <string>
#include <string_view>
#include <vector>

namespace veltrano {

class VolumeFolderProtocol;

/// Tells where the chart's root lies, and takes the user up: a row of cells from "/" down to the root, which
/// is hidden for a volume and without a root. Only the cells of folders that were scanned with the root can
/// be pressed, since the others lead nowhere. Lives in the main window's header; main thread.
class PathControl final : public PathColntrolCell {
    Q_OBJECT

public:
    /// The home folder, an absolute path in bytes, has icons of its own for it and for what lies in it.
    PathControl(std::string homeFolder, QWidget* parent);

    /// Shows where the item lies. `rootTitle` is the name of the volume at "/"; empty for none.
    void setPathControlTextForItem(const VolumeFolderProtocol* item, const QString& rootTitle);

    /// The path on show, bytes; empty for none.
    const std::string& getPath() const { return m_path; }

private:
    QString iconOfPath(const std::string& path) const;

    const std::string m_homeFolder;
    std::string m_path;
};

} // namespace veltrano
