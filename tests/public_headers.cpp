// Compiled as C++17, to show that a client can.
#include <tvtypes/datatype.h>
#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>
#include <tvtypes/units.h>

#include <fnd/except.h>
#include <fnd/filesystem.h>
#include <fndi18n/codecvt.h>
#include <fndi18n/ustring.h>
#include <fndut/alloc.h>
#include <ox/array.h>
#include <oxd/file.h>
#include <tv_services/diagnostics.h>
#include <tv_services/feval.h>
#include <tv_services/number_text.h>
#include <tv_utility/identifier.h>
#include <tvtypes_res/catalogue.h>
#include <tvtypes_res/messages.h>
