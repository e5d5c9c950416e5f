// resource.h - ids of the library's own string table.
#pragma once

#define IDS_MSGBOX_CAPTION      1
#define IDS_PRODUCT_A           3
#define IDS_PRODUCT_B           4
#define IDS_PROJECT_HELP        5
#define IDS_ERR_READ_WORKDIR    11
#define IDS_ERR_WORKDIR_WRITE   12
#define IDS_ERR_INSTALL         13
#define IDS_ERR_NO_ACAD         14
