#pragma once

extern "C" int close(int fd);
