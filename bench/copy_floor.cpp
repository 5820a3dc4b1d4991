// copy_floor INPUT BETWEEN OUTPUT: copies a file to a second and that to a third, in blocks of 256 KB, and
// removes the second. This is what a job with a temporary file cannot go below: the floor that compare.py
// measures against.
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t kBlockBytes = 256 * 1024;

bool writeAll(int file, const char* bytes, ssize_t count) {
  while (count > 0) {
    const ssize_t written = ::write(file, bytes, static_cast<std::size_t>(count));
    if (written <= 0) return false;
    bytes += written;
    count -= written;
  }
  return true;
}

bool copy(const char* from, const char* to) {
  const int input = ::open(from, O_RDONLY);
  const int output = ::open(to, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  std::vector<char> block(kBlockBytes);
  ssize_t count = -1;
  bool good = input >= 0 && output >= 0;
  while (good && (count = ::read(input, block.data(), block.size())) > 0) {
    good = writeAll(output, block.data(), count);
  }
  ::close(input);
  ::close(output);
  return good && count == 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) {
    std::fputs("usage: copy_floor INPUT BETWEEN OUTPUT\n", stderr);
    return 2;
  }
  if (!copy(arguments[1], arguments[2]) || !copy(arguments[2], arguments[3]) || ::unlink(arguments[2]) != 0) {
    std::perror("copy_floor");
    return 1;
  }
  return 0;
}
