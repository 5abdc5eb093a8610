// Ways to break the rules of segments, sections and the tables of __LINKEDIT.
#include "device/spoilers/spoiled.h"
#include "macho/format.h"

namespace device_test {

namespace {

namespace macho = device::macho;
using Segment = SegmentField;
using Section = SectionField;

const device::SegmentCommand& segmentOf(const Spoiled& it, const char* name) {
  return *it.sound.image.segment(name);
}

void rename(Spoiled& it, uint64_t place, std::string name) {
  name.resize(16);
  it.putText(place, name);
}

const Spoiler kSegmentSpoilers[] = {
    {"segments.count",
     "none",
     [](Spoiled& it) {
       for (const char* name : {"__TEXT", "__DATA", "__LINKEDIT"}) it.put32(it.segment(name), 0x16);
     },
     {"segments.link-edit-last", "segments.load-commands"}},
    {"segments.not-empty",
     "no memory",
     [](Spoiled& it) { it.segment("__DATA", Segment::size, 0); },
     {"sections.inside-segment", "segments.file-size"}},
    {"segments.file-size",
     "more of the file",
     [](Spoiled& it) {
       it.segment("__DATA", Segment::fileSize, segmentOf(it, "__DATA").size + 0x4000);
     },
     {"segments.file-apart", "segments.inside-file"}},
    {"segments.no-wrap", "at the end of all",
     [](Spoiled& it) {
       it.segment("__LINKEDIT", Segment::address, (uint64_t{1} << (it.is64() ? 63 : 31)) - 0x4000);
       it.segment("__LINKEDIT", Segment::size, 0x8000);
     }},
    {"segments.accessible", "no access",
     [](Spoiled& it) {
       it.segment("__LINKEDIT", Segment::protection, 0);
       it.segment("__LINKEDIT", Segment::size, 0x10000);
     }},
    {"segments.load-commands", "to read only",
     [](Spoiled& it) { it.segment("__TEXT", Segment::protection, 1); }},
    {"segments.load-commands",
     "not in the file's first page",
     [](Spoiled& it) { it.segment("__TEXT", Segment::fileOffset, 0x4000); },
     {"sections.inside-segment", "segments.file-apart"}},
    {"segments.memory-apart",
     "data over code",
     [](Spoiled& it) { it.segment("__DATA", Segment::address, 0); },
     {"sections.inside-segment", "segments.ascending"}},
    {"segments.file-apart",
     "data over code",
     [](Spoiled& it) { it.segment("__DATA", Segment::fileOffset, 0); },
     {"sections.inside-file", "sections.inside-segment", "sections.zeros",
      "segments.load-commands"}},
    {"segments.link-edit-last", "called otherwise",
     [](Spoiled& it) { rename(it, it.segment("__LINKEDIT") + 8, "__LINKEDIX"); }},
    {"segments.link-edit-last", "two",
     [](Spoiled& it) { rename(it, it.segment("__DATA") + 8, "__LINKEDIT"); }},
    {"segments.ascending",
     "the last first",
     [](Spoiled& it) {
       // There is free memory after everything else.
       it.segment("__TEXT", Segment::address, 0x40000000);
     },
     {"sections.inside-segment"}},
    {"segments.file-page",
     "4 KiB along",
     [](Spoiled& it) {
       it.segment("__LINKEDIT", Segment::fileOffset,
                  segmentOf(it, "__LINKEDIT").fileOffset + 0x1000);
     },
     {"segments.inside-file"}},
    {"segments.memory-page", "4 KiB along",
     [](Spoiled& it) {
       it.segment("__LINKEDIT", Segment::address, segmentOf(it, "__LINKEDIT").address + 0x1000);
     }},
    {"segments.inside-file", "beyond it",
     [](Spoiled& it) {
       it.segment("__LINKEDIT", Segment::fileSize, segmentOf(it, "__LINKEDIT").fileSize + 0x100);
     }},
    {"segments.protection", "code that can be written to",
     [](Spoiled& it) { it.segment("__TEXT", Segment::maxProtection, 7); }},
    {"segments.protection",
     "at once",
     [](Spoiled& it) {
       it.segment("__TEXT", Segment::maxProtection, 7);
       it.segment("__TEXT", Segment::protection, 7);
     },
     {"segments.load-commands"}},
    {"segments.protection", "more than it may have",
     [](Spoiled& it) { it.segment("__LINKEDIT", Segment::protection, 3); }},
    {"segments.no-page-zero", "one",
     [](Spoiled& it) { rename(it, it.segment("__DATA") + 8, "__PAGEZERO"); }},
    {"sections.inside-file",
     "longer",
     [](Spoiled& it) { it.section("__cstring", Section::size, 0x100000); },
     {"sections.inside-segment"}},
    {"sections.inside-segment", "elsewhere in memory",
     [](Spoiled& it) { it.section("__cstring", Section::address, 8); }},
    {"sections.aligned", "to 4096 bytes",
     [](Spoiled& it) { it.section("__mod_init_func", Section::alignment, 12); }},
    {"sections.aligned", "to what no number can say",
     [](Spoiled& it) { it.section("__mod_init_func", Section::alignment, 64); }},
    {"sections.no-relocations", "three",
     [](Spoiled& it) { it.section("__text", Section::relocationCount, 3); }},
    {"sections.no-relocations", "by its flags",
     [](Spoiled& it) { it.section("__text", Section::flags, it.header("__text").flags | 0x100); }},
    {"sections.zeros", "a byte",
     [](Spoiled& it) { it.put8(it.at(it.header("__bss").address), 1); }},
    {"sections.unwind", "an empty table",
     [](Spoiled& it) {
       rename(it, it.section("__cstring"), "__eh_frame");
       it.section("__cstring", Section::size, 0);
     }},
    {"link-edit.inside",
     "binds beyond it",
     [](Spoiled& it) { it.info(Info::weakBinds, 0x4000, 8); },
     {"binds.not-weak"}},
    {"link-edit.inside", "data in code before it",
     [](Spoiled& it) {
       it.put32(it.tableCommand() + 8, 0x100);
       it.put32(it.tableCommand() + 12, 8);
     }},
    {"link-edit.apart", "exports over binds",
     [](Spoiled& it) {
       it.put32(it.tableCommand() + 8, static_cast<uint32_t>(it.info(Info::binds)) + 4);
       it.put32(it.tableCommand() + 12, 4);
     }},
};

}  // namespace

std::span<const Spoiler> segmentSpoilers() { return kSegmentSpoilers; }

}  // namespace device_test
