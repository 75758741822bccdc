#pragma once

#include <any>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace veltrano {

/// Named events inside the program, delivered at once, in the order of registration. Main thread only. One
/// per program, handed through constructors; an observer takes itself off before it goes.
class NotificationCentre {
public:
    /// What an event brings along; empty for most. Its type belongs to the event's name.
    using Object = std::any;
    using Handler = std::function<void(const Object&)>;
    using Token = std::uint64_t;

    /// Calls the handler at each event of that name, until the token is removed.
    Token addObserver(std::string name, Handler handler);

    /// Harmless for a token that is gone. Safe inside a handler.
    void removeObserver(Token token);

    /// Delivers the event. An observer added by a handler meanwhile hears of the next one only; one removed
    /// meanwhile hears nothing more.
    void postNotification(std::string_view name, const Object& object = {});

private:
    struct Observer {
        std::string name;
        Handler handler;
    };
    std::map<Token, Observer> m_observers;
    Token m_nNextToken = 1;
};

} // namespace veltrano
