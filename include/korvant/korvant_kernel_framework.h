// Root of the host family's abstract interfaces.
#ifndef KORVANT_KERNEL_FRAMEWORK_H
#define KORVANT_KERNEL_FRAMEWORK_H

/// What every interface of the host family derives from. It has no operations of its own, so
/// that the first operation of an interface stands right after the destructor.
class KorvantKernelFramework {
  public:
    virtual ~KorvantKernelFramework() = default;

  protected:
    KorvantKernelFramework() = default;
    KorvantKernelFramework(const KorvantKernelFramework&) = default;
    KorvantKernelFramework& operator=(const KorvantKernelFramework&) = default;
};

#endif
