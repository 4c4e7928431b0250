// Callables that a library hands to the host, which keeps copies of them.
#pragma once

#include <functional>

namespace NXOpen {

template <class T, class R, class... Arguments>
std::function<R(Arguments...)> make_callback(T* object, R (T::*method)(Arguments...)) {
    return [=](Arguments... arguments) { return (object->*method)(arguments...); };
}

}  // namespace NXOpen
