// ObjectContext: how a page says whether what it did shall hold. There are no transactions beyond
// those of a connection; the page's events OnTransactionCommit and OnTransactionAbort are called by
// it where the page's directive asks for a transaction. Of the page's thread.
#ifndef RK_PAGEHOST_PAGES_TRANSACTION_OBJECT_H_
#define RK_PAGEHOST_PAGES_TRANSACTION_OBJECT_H_

#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class TransactionObject final : public TabledObject<TransactionObject> {
 public:
  explicit TransactionObject(std::shared_ptr<bool> aborted) : aborted_(std::move(aborted)) {}
  std::string_view type_name() const override { return "IObjectContext"; }
  static std::span<const Member<TransactionObject>> members() {
    using T = TransactionObject;
    static constexpr Member<T> kMembers[] = {
        {"", nullptr},
        {"SetComplete", &T::set_complete},
        {"SetAbort", &T::set_abort},
    };
    return kMembers;
  }

 private:
  Value set_complete(const Call&) {
    *aborted_ = false;
    return {};
  }
  Value set_abort(const Call&) {
    *aborted_ = true;
    return {};
  }

  std::shared_ptr<bool> aborted_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_TRANSACTION_OBJECT_H_
