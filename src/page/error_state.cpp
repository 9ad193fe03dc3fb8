#include "page/error_state.h"

#include <utility>

namespace keldrin {

ErrorState &errorState() {
    static ErrorState state;
    return state;
}

void setErrorState(int number, int systemError) {
    errorState() = {number, systemError};
}

int takeErrorNumber() {
    return std::exchange(errorState().number, 0);
}

} // namespace keldrin
