struct stat;
