// The applications that are installed on the stand-in's phone.
#pragma once

#include <map>
#include <string>

namespace host {

struct InstalledApplication {
  std::string name;
  bool isHidden = false;  ///< has no place on the home screen
};

/// By identifier: what every phone has, those with an icon in the container's /Applications, and
/// those whose icon the process was given.
std::map<std::string, InstalledApplication> installedApplications();

/// The file of an application's icon on this machine; empty for what is no identifier.
std::string applicationIcon(const std::string& identifier);

}  // namespace host
