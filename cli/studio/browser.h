// Opening the page's address in the user's browser.
#pragma once

#include <string>

namespace varnix::cli {

/// A file that only this user can read and that leads to the address, so that the address, with its
/// secret, is no argument of a program: other users see those. It is gone with this object.
class AddressFile {
 public:
  /// Throws Failure.
  explicit AddressFile(const std::string& address);
  ~AddressFile();
  AddressFile(const AddressFile&) = delete;
  AddressFile& operator=(const AddressFile&) = delete;

  std::string path() const;

 private:
  std::string folder_;
};

/// Whether there is a desktop on which a browser could open.
bool hasDesktop();
/// Opens the file with the program for it. Nothing happens if there is none.
void openFile(const std::string& file);

}  // namespace varnix::cli
