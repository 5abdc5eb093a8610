// Reads the page on top of the hosted Settings application.
#pragma once

#include "gallery/screens/list_page.h"

namespace varnix::screens {

/// What its cells, its bar and its field answer. The application shows a page of rows.
ListPage readListPage();

}  // namespace varnix::screens
