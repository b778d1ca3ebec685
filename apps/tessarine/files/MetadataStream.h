#pragma once
#include <cstdint>

#include <taglib/tiostream.h>

#include "apps/tessarine/files/Chunks.h"
#include "apps/tessarine/files/TemporaryFile.h"

namespace App {

/// Lets TagLib read at most `mostBytes` of a file; further reads return nothing.
class MetadataSource final : public TagLib::IOStream {
public:
    MetadataSource(FileBytes &bytes, uint64_t mostBytes) : file(bytes), left(mostBytes) {}

    /// True if TagLib tried to read more.
    bool isExhausted() const { return exhausted; }

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector &) override {}
    void insert(const TagLib::ByteVector &, unsigned long, unsigned long) override {}
    void removeBlock(unsigned long, unsigned long) override {}
    bool readOnly() const override { return true; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return position; }
    long length() override { return static_cast<long>(file.size()); }
    void truncate(long) override {}

private:
    FileBytes &file;
    uint64_t left;
    long position = 0;
    bool exhausted = false;
};

/// Lets TagLib change a file before it is committed, so that a full disk is noticed.
class MetadataTarget final : public TagLib::IOStream {
public:
    explicit MetadataTarget(TemporaryFile &written) : file(written) {}

    TagLib::FileName name() const override { return ""; }
    TagLib::ByteVector readBlock(unsigned long length) override;
    void writeBlock(const TagLib::ByteVector &data) override;
    void insert(const TagLib::ByteVector &data, unsigned long start, unsigned long replaced) override;
    void removeBlock(unsigned long start, unsigned long length) override;
    bool readOnly() const override { return false; }
    bool isOpen() const override { return true; }
    void seek(long offset, Position from) override;
    long tell() const override { return position; }
    long length() override { return file.length(); }
    void truncate(long length) override;

private:
    TemporaryFile &file;
    long position = 0;
};

} // namespace App
