#pragma once

// The tests that need Qt's application object (widgets, fonts, images) share one, made when the first of
// them asks for it and taken down before the program's own exit, while Qt is still whole.

namespace vantrel::testing {

void ensureApplication();

} // namespace vantrel::testing
