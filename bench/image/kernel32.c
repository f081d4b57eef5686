/* A library with nothing in it but its version, which is what an installer reads of a system. */
int __stdcall DllMain(void *module, unsigned long reason, void *reserved) {
  (void)module, (void)reason, (void)reserved;
  return 1;
}
