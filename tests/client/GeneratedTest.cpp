#include "ClientTest.h"
