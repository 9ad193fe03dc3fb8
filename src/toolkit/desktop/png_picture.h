#pragma once

#include <string>

class QImage;

namespace keldrin {

/// A picture of opaque pixels as a PNG file with 8 bits each of red, green and blue and the
/// picture's dots per metre. Rows are not filtered and little is spent on compression: pages are
/// mostly white, so filters gain nothing and cost most of the time. Empty when memory runs out.
/// Safe on any thread; the same picture gives the same bytes.
std::string pngOf(const QImage &picture);

} // namespace keldrin
