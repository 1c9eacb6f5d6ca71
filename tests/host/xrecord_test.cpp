#include "host/acdb_dictionary.h"

#include <gtest/gtest.h>
