// Property lists with every kind of value, as the platform's tools write them, and damaged ones.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace test {

inline constexpr std::string_view kXmlPropertyList = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>big</key>
	<integer>9223372036854775813</integer>
	<key>blob</key>
	<data>
	AAH+/w==
	</data>
	<key>count</key>
	<integer>7</integer>
	<key>date</key>
	<date>2015-09-16T17:00:01Z</date>
	<key>empty</key>
	<dict/>
	<key>enabled</key>
	<true/>
	<key>list</key>
	<array>
		<integer>1</integer>
		<string>two</string>
		<dict>
			<key>three</key>
			<integer>3</integer>
		</dict>
	</array>
	<key>name</key>
	<string>Grün 色 😀</string>
	<key>negative</key>
	<integer>-5</integer>
	<key>none</key>
	<array/>
	<key>off</key>
	<false/>
	<key>plain</key>
	<string>hello</string>
	<key>real</key>
	<real>0.1</real>
</dict>
</plist>
)xml";

/// The same contents.
std::string binaryPropertyList();

std::string bigEndian(std::uint64_t value, int size);

/// A binary property list made from its objects. References take two bytes.
std::string binaryFromObjects(const std::vector<std::string>& objects, std::uint64_t top = 0);

/// An array that refers to the objects with those numbers.
std::string binaryArray(const std::vector<std::uint64_t>& items);

}  // namespace test
