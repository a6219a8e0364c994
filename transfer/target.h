// Where the answer goes: a new file, or a text in memory. No more than the limit is taken.
#pragma once

#include <cstddef>
#include <string>

namespace transfer {

class Target {
  public:
    enum class Taken { All, TooMuch, NotWritten };

    explicit Target(long limit) : m_limit(static_cast<size_t>(limit)) {}
    /// A file that isn't finished is removed.
    ~Target() { discard(); }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    /// Makes a file that only its owner reads; one that is there, or a link, is not taken.
    bool create(const std::string& path);
    Taken take(const char* bytes, size_t count);
    /// Flushes the file to disk and keeps it.
    bool finish();
    void discard();

    const std::string& text() const { return m_text; }

  private:
    size_t m_limit;
    size_t m_size = 0;
    int m_file = -1;
    std::string m_path;
    std::string m_text;
};

} // namespace transfer
