#include "platform/NotificationCentre.h"

#include <utility>
#include <vector>

namespace veltrano {

NotificationCentre::Token NotificationCentre::addObserver(std::string name, Handler handler) {
    const Token token = m_nNextToken++;
    m_observers.emplace(token, Observer{std::move(name), std::move(handler)});
    return token;
}

void NotificationCentre::removeObserver(Token token) {
    m_observers.erase(token);
}

void NotificationCentre::postNotification(std::string_view name, const Object& object) {
    std::vector<Token> concerned;
    for (const auto& [token, observer] : m_observers)
        if (observer.name == name)
            concerned.push_back(token);
    for (const Token token : concerned) {
        const auto found = m_observers.find(token);
        if (found == m_observers.end())
            continue;
        // A copy, since the handler may remove its own observer.
        const Handler handler = found->second.handler;
        handler(object);
    }
}

} // namespace veltrano
