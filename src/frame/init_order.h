// init_order.h - order of the module's static initialisation.
//
// The module announces its source units to the error-handler service before
// its entry runs at load; the entry, on systems that run it from a static
// object, comes next; everything else follows.  Static objects are destroyed
// in the reverse order, so the entry's unload step runs before the units'
// module object goes.  (On Windows the loader calls the entry after all
// static objects exist anyway.)
#ifndef ZELSTR_FRAME_INIT_ORDER_H
#define ZELSTR_FRAME_INIT_ORDER_H

#define ZELSTR_INIT_UNITS __attribute__((init_priority(200)))
#define ZELSTR_INIT_ENTRY __attribute__((init_priority(300)))

#endif  // ZELSTR_FRAME_INIT_ORDER_H
