// Keyed archives put together by hand, sound and broken ones.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "Foundation/keyed_archive_uid.h"
#include "support/hosted.h"

namespace test {

using Entries = std::vector<std::pair<const char*, NSObject*>>;

NSObject* uid(std::uint32_t index);
NSObject* integer(long long value);
NSObject* real(double value);
NSObject* boolean(bool value);
NSArray* list(const std::vector<NSObject*>& items);
/// Nil values are left out.
NSMutableDictionary* fields(const Entries& entries);
NSObject* classNamed(const char* name);

NSData* binary(NSObject* tree);

/// What surrounds the objects of an archive.
NSMutableDictionary* archiveAround(NSObject* objects, NSObject* root = uid(1));
/// The objects behind the first one, which stands for nil.
NSData* archive(const std::vector<NSObject*>& objects, NSObject* root = uid(1));
/// One object of that class; objects from 3 on are the others.
NSData* archiveOf(const char* className, const Entries& entries,
                  const std::vector<NSObject*>& others = {});

/// That many arrays in each other.
NSData* nestedArrays(std::uint32_t count);

struct NamedArchive {
  const char* name;
  NSData* data;
};

/// What no reader can make an object of.
std::vector<NamedArchive> brokenArchives();

/// An archive with most of what there is, as the platform writes it. Its collections cannot change:
/// once damaged, one that could might hold itself, and nobody would free it.
NSData* richArchive();

NSData* colorArchive();

std::string bytesOf(NSData* data);
NSData* dataOf(const std::string& bytes);

}  // namespace test
