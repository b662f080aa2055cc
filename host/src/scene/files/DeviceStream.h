#pragma once
#include <QIODevice>

#include <cstdint>
#include <istream>
#include <ostream>
#include <streambuf>
#include <vector>

// Standard streams over Qt devices, in blocks: plug-in data read and write themselves through
// std::istream and std::ostream.
namespace host {

// Writes to a device and counts. A failed write sets the stream's bad bit and nothing more is
// written.
class DeviceWriteBuffer : public std::streambuf {
public:
    explicit DeviceWriteBuffer(QIODevice& device);
    ~DeviceWriteBuffer() override;
    // Bytes and CRC-32 since the last restart().
    void restart();
    std::uint64_t count();
    std::uint32_t crc();
    bool failed() const { return failed_; }

protected:
    int_type overflow(int_type character) override;
    int sync() override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;

private:
    bool drain();
    bool put(const char* bytes, std::size_t count);

    QIODevice& device_;
    std::vector<char> block_;
    std::uint64_t count_ = 0;
    std::uint32_t crc_ = 0;
    bool failed_ = false;
};

// Reads `length` bytes of a device from its position on and never more; seeking stays inside.
// The end of that range, or of the device, is the end of the stream.
class DeviceReadBuffer : public std::streambuf {
public:
    DeviceReadBuffer(QIODevice& device, std::uint64_t length);

protected:
    int_type underflow() override;
    std::streamsize xsgetn(char* text, std::streamsize count) override;
    std::streamsize showmanyc() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    std::uint64_t position() const { return taken_ - std::uint64_t(egptr() - gptr()); }

    QIODevice& device_;
    const qint64 start_;
    const std::uint64_t length_;
    std::uint64_t taken_ = 0; // bytes of the range read from the device so far
    std::vector<char> block_;
};

// CRC-32 (the polynomial of PNG and zip) of more bytes after `crc`; start with 0.
std::uint32_t crc32(std::uint32_t crc, const char* bytes, std::size_t count);

} // namespace host
