// Numbers of the module's resources.

#pragma once

#define TYPE_LIBRARY 1
#define IDS_NAME 100
#define REGISTRY_SCRIPT 101
#define IDI_COMPONENT 201
#define IDI_RATE_WIZARD 205
#define IDI_EDIT_EXPRESSION 206
