#pragma once

struct stat;
