#include "toolkit/desktop/png_picture.h"

#include <QByteArray>
#include <QImage>

#include <array>
#include <cstdint>
#include <string_view>

namespace keldrin {

namespace {

using CrcTable = std::array<std::uint32_t, 256>;

constexpr CrcTable makeCrcTable() {
    constexpr std::uint32_t polynomial = 0xEDB88320U;
    CrcTable table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder >> 1U) ^ ((remainder & 1U) != 0 ? polynomial : 0U);
        }
        table[byte] = remainder;
    }
    return table;
}
constexpr CrcTable CrcOfByte = makeCrcTable();

std::uint32_t crcOf(std::string_view bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char c : bytes) {
        crc = CrcOfByte[(crc ^ static_cast<unsigned char>(c)) & 0xFFU] ^ (crc >> 8U);
    }
    return ~crc;
}

void appendNumber(std::string &out, std::uint32_t value) {
    for (const unsigned shift : {24U, 16U, 8U, 0U}) {
        out += static_cast<char>((value >> shift) & 0xFFU);
    }
}

void appendChunk(std::string &out, std::string_view kind, std::string_view data) {
    appendNumber(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t checked = out.size();
    out.append(kind).append(data);
    appendNumber(out, crcOf(std::string_view(out).substr(checked)));
}

std::string header(const QImage &picture) {
    constexpr std::string_view form("\x08\x02\x00\x00\x00", 5); // 8 bits, RGB, not interlaced
    std::string data;
    appendNumber(data, static_cast<std::uint32_t>(picture.width()));
    appendNumber(data, static_cast<std::uint32_t>(picture.height()));
    return data.append(form);
}

std::string dotsPerMetre(const QImage &picture) {
    std::string data;
    appendNumber(data, static_cast<std::uint32_t>(picture.dotsPerMeterX()));
    appendNumber(data, static_cast<std::uint32_t>(picture.dotsPerMeterY()));
    return data += '\x01';
}

// The rows, each after a 0 for "not filtered".
QByteArray rowsOf(const QImage &picture) {
    const qsizetype width = picture.width();
    QByteArray rows((3 * width + 1) * picture.height(), '\0');
    char *to = rows.data();
    for (int y = 0; y < picture.height(); ++y) {
        const auto *pixel = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        ++to;
        for (qsizetype x = 0; x < width; ++x, to += 3) {
            to[0] = static_cast<char>(qRed(pixel[x]));
            to[1] = static_cast<char>(qGreen(pixel[x]));
            to[2] = static_cast<char>(qBlue(pixel[x]));
        }
    }
    return rows;
}

} // namespace

std::string pngOf(const QImage &picture) {
    constexpr int fastest = 1;
    constexpr qsizetype lengthBytes = 4; // Qt's own, before the stream
    const QByteArray rows = rowsOf(picture.convertToFormat(QImage::Format_RGB32));
    const QByteArray packed = qCompress(rows, fastest);
    if (packed.size() <= lengthBytes) {
        return {};
    }
    std::string out("\x89PNG\r\n\x1A\n");
    out.reserve(static_cast<std::size_t>(packed.size()) + 128);
    appendChunk(out, "IHDR", header(picture));
    appendChunk(out, "pHYs", dotsPerMetre(picture));
    appendChunk(
        out, "IDAT",
        {packed.data() + lengthBytes, static_cast<std::size_t>(packed.size() - lengthBytes)});
    appendChunk(out, "IEND", {});
    return out;
}

} // namespace keldrin
