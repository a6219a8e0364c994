// The number of the RuntimeError that a step raises, 0 when it goes through.
//
//     EXPECT_EQ(RaisedError([] { ToInt16(1e9); }), errors::Overflow);
#pragma once

#include "platform/error.h"

#include <utility>

namespace kelvrane {

template <typename Step>
int RaisedError(Step&& step) {
    try {
        std::forward<Step>(step)();
    } catch (const RuntimeError& error) {
        return error.number;
    }
    return 0;
}

} // namespace kelvrane
