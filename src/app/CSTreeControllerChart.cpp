// What the chart asks of the window: sounds and the file manager.

#include "app/CSTreeController.h"

namespace veltrano {

void CSTreeController::playSound(std::string_view name) {
    m_services.sounds.play(name);
}

void CSTreeController::showItems(const std::vector<std::string>& paths) {
    m_services.desktop.showItems(paths);
}

void CSTreeController::showItemProperties(const std::vector<std::string>& paths) {
    m_services.desktop.showItemProperties(paths);
}

} // namespace veltrano
