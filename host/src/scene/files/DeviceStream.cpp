#include "scene/files/DeviceStream.h"

#include <algorithm>
#include <zlib.h>

namespace host {

namespace {
constexpr std::size_t kBlockSize = 64 * 1024;
}

std::uint32_t crc32(std::uint32_t crc, const char* bytes, std::size_t count) {
    while (count > 0) {
        const auto part = uInt(std::min<std::size_t>(count, 1u << 30));
        crc = std::uint32_t(::crc32(crc, reinterpret_cast<const Bytef*>(bytes), part));
        bytes += part;
        count -= part;
    }
    return crc;
}

DeviceWriteBuffer::DeviceWriteBuffer(QIODevice& device) : device_(device), block_(kBlockSize) {
    setp(block_.data(), block_.data() + block_.size());
}

DeviceWriteBuffer::~DeviceWriteBuffer() {
    drain();
}

void DeviceWriteBuffer::restart() {
    drain();
    count_ = 0;
    crc_ = 0;
}

std::uint64_t DeviceWriteBuffer::count() {
    return count_ + std::uint64_t(pptr() - pbase());
}

std::uint32_t DeviceWriteBuffer::crc() {
    return crc32(crc_, pbase(), std::size_t(pptr() - pbase()));
}

bool DeviceWriteBuffer::put(const char* bytes, std::size_t count) {
    if (failed_)
        return false;
    std::size_t done = 0;
    while (done < count) {
        const qint64 written = device_.write(bytes + done, qint64(count - done));
        if (written <= 0) {
            failed_ = true;
            return false;
        }
        done += std::size_t(written);
    }
    count_ += count;
    crc_ = crc32(crc_, bytes, count);
    return true;
}

bool DeviceWriteBuffer::drain() {
    const auto pending = std::size_t(pptr() - pbase());
    const bool ok = pending == 0 || put(pbase(), pending);
    setp(block_.data(), block_.data() + block_.size());
    return ok && !failed_;
}

DeviceWriteBuffer::int_type DeviceWriteBuffer::overflow(int_type character) {
    if (!drain())
        return traits_type::eof();
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    *pptr() = traits_type::to_char_type(character);
    pbump(1);
    return character;
}

int DeviceWriteBuffer::sync() {
    return drain() ? 0 : -1;
}

std::streamsize DeviceWriteBuffer::xsputn(const char* text, std::streamsize count) {
    if (count <= epptr() - pptr()) {
        std::copy_n(text, count, pptr());
        pbump(int(count));
        return count;
    }
    if (!drain() || !put(text, std::size_t(count)))
        return 0;
    return count;
}

DeviceReadBuffer::DeviceReadBuffer(QIODevice& device, std::uint64_t length)
    : device_(device), start_(device.pos()), length_(length), block_(kBlockSize) {
}

DeviceReadBuffer::int_type DeviceReadBuffer::underflow() {
    const auto wanted = std::min<std::uint64_t>(block_.size(), length_ - taken_);
    const qint64 got = wanted > 0 ? device_.read(block_.data(), qint64(wanted)) : 0;
    if (got <= 0) {
        setg(nullptr, nullptr, nullptr);
        return traits_type::eof();
    }
    taken_ += std::uint64_t(got);
    setg(block_.data(), block_.data(), block_.data() + got);
    return traits_type::to_int_type(*gptr());
}

std::streamsize DeviceReadBuffer::xsgetn(char* text, std::streamsize count) {
    std::streamsize done = std::min<std::streamsize>(count, egptr() - gptr());
    std::copy_n(gptr(), done, text);
    gbump(int(done));
    while (done < count) {
        const auto wanted = std::min<std::uint64_t>(std::uint64_t(count - done), length_ - taken_);
        const qint64 got = wanted > 0 ? device_.read(text + done, qint64(wanted)) : 0;
        if (got <= 0)
            break;
        setg(nullptr, nullptr, nullptr);
        taken_ += std::uint64_t(got);
        done += std::streamsize(got);
    }
    return done;
}

std::streamsize DeviceReadBuffer::showmanyc() {
    const std::uint64_t left = length_ - taken_;
    return left > 0 ? std::streamsize(left) : -1;
}

DeviceReadBuffer::pos_type DeviceReadBuffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                                     std::ios_base::openmode which) {
    off_type base = 0;
    if (from == std::ios_base::cur)
        base = off_type(position());
    else if (from == std::ios_base::end)
        base = off_type(length_);
    return seekpos(base + offset, which);
}

DeviceReadBuffer::pos_type DeviceReadBuffer::seekpos(pos_type position_,
                                                     std::ios_base::openmode which) {
    const auto target = off_type(position_);
    if (!(which & std::ios_base::in) || target < 0 || std::uint64_t(target) > length_)
        return pos_type(off_type(-1));
    if (std::uint64_t(target) == position())
        return position_;
    if (!device_.seek(start_ + target))
        return pos_type(off_type(-1));
    taken_ = std::uint64_t(target);
    setg(nullptr, nullptr, nullptr);
    return position_;
}

} // namespace host
