#pragma once

namespace keldrin {

/// A visitor of a variant, made of one function for each of its types.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};
template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

} // namespace keldrin
