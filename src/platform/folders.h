// The user's folders and small file questions. Paths are bytes as the system has them, without a trailing
// slash.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillet {

// The places of one user. A scripted one stands for another home.
class Folders {
 public:
  virtual ~Folders() = default;
  // The Documents folder, made when missing; nothing if there is none or it cannot be made.
  virtual std::optional<std::string> documentsFolder() const = 0;
  // A folder in which a private folder for temporary files can be made; not made by this call.
  virtual std::string temporaryParentFolder() const = 0;
  // The file of the user defaults.
  virtual std::string defaultsFile() const = 0;
};

// By the environment: XDG_DOCUMENTS_DIR of user-dirs.dirs, else ~/Documents; TMPDIR, else quillet/tmp in the
// XDG cache folder; quillet/defaults.json in the XDG config folder.
class UserFolders final : public Folders {
 public:
  std::optional<std::string> documentsFolder() const override;
  std::string temporaryParentFolder() const override;
  std::string defaultsFile() const override;
};

// A folder of mode 0700 with a name that no other run has, removed with its content's leftovers by the
// destructor; what a killed process left behind in the parent is removed too. path() is empty if it could not
// be made.
class PrivateTemporaryFolder {
 public:
  explicit PrivateTemporaryFolder(const std::string& parent);  // parent is made when missing
  ~PrivateTemporaryFolder();
  PrivateTemporaryFolder(const PrivateTemporaryFolder&) = delete;
  PrivateTemporaryFolder& operator=(const PrivateTemporaryFolder&) = delete;
  const std::string& path() const { return path_; }

  // Removes the folders of all living objects, for a process that is about to end while they are in use.
  static void removeAll();

 private:
  std::string path_;
  int lock_ = -1;  // held as long as the folder is in use, so that others know
};

std::string lastPathComponent(std::string_view path);  // "" of "/"
std::string appendPathComponent(std::string_view folder,
                                std::string_view name);  // one slash between, "" adds none
bool makeFolders(const std::string& path);               // with all parents; true if it is there
bool fileExists(const std::string& path);
bool isFolder(const std::string& path);

// "file:///a%20b" for the absolute path "/a b", "" for a relative one; and back, nothing for what is no file
// URL of this machine.
std::string fileUrlFromPath(std::string_view path);
std::optional<std::string> pathFromFileUrl(std::string_view url);

// The name itself if the folder has no such entry, else "stem_2.ext" to "stem_99.ext", the first that is
// free; without an extension there is no dot. Nothing when all are taken.
std::optional<std::string> fileNameAvailableInFolder(const std::string& folder, const std::string& fileName);

}  // namespace quillet
