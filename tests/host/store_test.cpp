#include "host/model/Store.h"

#include <gtest/gtest.h>
