// IEnumPins and IEnumMediaTypes over a list that does not change any more.
#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/module.h"

namespace capture {

// `Traits` names the interface (Interface, Iid()), what is listed (Item) and what is given out (Given), and
// how: HRESULT Give(const Item&, Given*).
template <typename Traits>
class CEnumerator final : public Traits::Interface {
  public:
    using Items = std::shared_ptr<const std::vector<typename Traits::Item>>;

    CEnumerator(Items items, CRef<IUnknown> owner, std::size_t next)
        : items_(std::move(items)), owner_(std::move(owner)), next_(next) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override try {
        return AnswerQuery({{IID_IUnknown, this}, {Traits::Iid(), this}}, iid, out);
    } catch (...) {
        return handset::EdgeResult();
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.Release(this); }

    HRESULT STDMETHODCALLTYPE Next(ULONG count, typename Traits::Given* given, ULONG* fetched) override try {
        if (given == nullptr) return E_POINTER;
        if (fetched == nullptr && count != 1) return E_INVALIDARG;
        ULONG done = 0;
        for (; done < count && next_ < items_->size(); ++done, ++next_) {
            const HRESULT result = Traits::Give((*items_)[next_], &given[done]);
            if (FAILED(result)) return result;
        }
        if (fetched != nullptr) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    } catch (...) {
        return handset::EdgeResult();
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override try {
        const std::size_t left = items_->size() - next_;
        next_ += std::min<std::size_t>(count, left);
        return count <= left ? S_OK : S_FALSE;
    } catch (...) {
        return handset::EdgeResult();
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(typename Traits::Interface** out) override try {
        if (out == nullptr) return E_POINTER;
        *out = new CEnumerator(items_, owner_, next_);
        return S_OK;
    } catch (...) {
        return handset::EdgeResult();
    }

  private:
    const CModuleUse use_;
    const Items items_;
    const CRef<IUnknown> owner_;  // what is listed lives as long as this does
    std::size_t next_;
    CReferenceCount references_;
};

}  // namespace capture
