#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

namespace db::odbc {

/// When a server that does not answer is given up.
struct Watch {
    std::chrono::milliseconds first{10000}; ///< that anything may take without a question
    std::chrono::milliseconds between{5000}; ///< from one question to the next
    std::chrono::seconds answer{5}; ///< that a question is given: a busy server lets nobody in at once
    int silences = 2; ///< questions in a row without an answer
};

/// The result of `work`, which may block for as long as it needs to: while it does, `answers` is asked whether the
/// server is still there. Nothing when it is not. A statement may well take minutes, a server that hangs takes for
/// ever, and a driver knows only one limit for both.
///
/// The work runs in a thread of its own, which is left behind with what it holds when it is given up: nothing that it
/// uses may belong to the caller alone.
template <typename Result>
std::optional<Result>
untilSilent(std::function<Result()> work, const std::function<bool()> &answers, const Watch &watch)
{
    const auto promise = std::make_shared<std::promise<Result>>();
    std::future<Result> result = promise->get_future();
    const auto run = [promise](std::function<Result()> &own) {
        try {
            Result value = own();
            own = nullptr; // who waits for the result may be the last to hold the connection, and close it
            promise->set_value(std::move(value));
        } catch (...) {
            own = nullptr;
            promise->set_exception(std::current_exception());
        }
    };
    try {
        std::thread([run, own = work]() mutable { run(own); }).detach();
    } catch (const std::system_error &) {
        run(work); // no thread to be had
    }
    work = nullptr;
    int silences = 0;
    for (auto wait = watch.first; result.wait_for(wait) != std::future_status::ready; wait = watch.between) {
        silences = answers() ? 0 : silences + 1;
        if (silences == watch.silences)
            return {};
    }
    return result.get();
}

} // namespace db::odbc
