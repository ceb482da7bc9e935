// name_length.cpp - the name-length command of the T-SQL name functions.
//
// The caller registers an int of its own; the name functions then write
// into it the length of each name they read, until the caller withdraws
// it.  The registration is the calling thread's own, so that threads that
// read names at once each get their own lengths.
#include "sql/name_length.h"

#include <climits>

#include "frame/per_thread.h"
#include "frame/report.h"
#include "zelstr/tsql.h"

namespace {

struct Registration {
  int* address = nullptr;
};
using RegistrationSlot =
    zelstr::frame::PerThread<Registration, zelstr::frame::ThreadSlot::kNameLength>;

void complain(zelstr::frame::Message const& message) {
  zelstr::frame::report(zelstr::frame::Unit::connfortsqlstrfncs, message);
}

}  // namespace

namespace zelstr::sql {

void note_name_length(std::ptrdiff_t length) noexcept {
  int* const address = RegistrationSlot::get().address;
  if (address != nullptr) *address = length > INT_MAX ? INT_MAX : static_cast<int>(length);
}

}  // namespace zelstr::sql

int _ztsqlwritenamelength(int* pnNameLength) noexcept {
  Registration& registration = RegistrationSlot::get();
  if (pnNameLength != nullptr && registration.address != nullptr) {
    complain(zelstr::frame::msg::kNameLengthHasAddress);
    return 0;
  }
  if (pnNameLength == nullptr && registration.address == nullptr) {
    complain(zelstr::frame::msg::kNameLengthNoAddress);
    return 0;
  }
  registration.address = pnNameLength;
  return 1;
}
