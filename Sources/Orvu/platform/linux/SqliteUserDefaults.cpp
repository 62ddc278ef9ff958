#include "platform/linux/SqliteUserDefaults.h"
