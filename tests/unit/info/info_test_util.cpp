// Temporary folders for the message and format file tests.
#include "info_test_util.h"

#include <filesystem>
#include <fstream>

namespace zento::test {

TempDir::TempDir() {
  std::string tmpl = (std::filesystem::temp_directory_path() / "zento_info_XXXXXX").string();
  if (mkdtemp(tmpl.data()) != nullptr) path_ = tmpl;
}

TempDir::~TempDir() {
  std::error_code ec;
  if (!path_.empty()) std::filesystem::remove_all(path_, ec);
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
  const std::string file = path_ + "/" + name;
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

}  // namespace zento::test
