// The keychain of Linux: items of the Secret Service (the keyring of GNOME, and others like it)
// that have two attributes, the name of our schema for the class and the service. Nothing asks for
// a password, and each operation ends within `timeLimit`, whatever the bus and the service do.

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <gio/gio.h>
#include <libsecret/secret.h>

#include "PrompterCore/platform/KeychainItems.h"

namespace PrompterCore::KeychainItems {

namespace {

constexpr guint timeLimit = 5000;  // ms

// What the Security framework answers in the same case.
constexpr std::int32_t ioError = -36;
constexpr std::int32_t wrongParameter = -50;
constexpr std::int32_t userCancelled = -128;
constexpr std::int32_t notAvailable = -25291;
constexpr std::int32_t denied = -25293;
constexpr std::int32_t duplicateItem = -25299;
constexpr std::int32_t noDefaultKeychain = -25307;
constexpr std::int32_t locked = -25308;

constexpr struct {
    std::int32_t status;
    const char* text;
} messages[] = {
    {success, "No error."},
    {ioError, "The secret service could not store or read the item."},
    {wrongParameter, "A service name holds no U+0000."},
    {userCancelled, "The keyring's question was not answered."},
    {notAvailable, "No secret service answers on this session's bus."},
    {denied, "Access to the secret service was denied."},
    {duplicateItem, "There is such an item already."},
    {itemNotFound, "There is no such item."},
    {noDefaultKeychain, "There is no default keyring; log in to the desktop or create one."},
    {locked, "The keyring is locked; unlock it and try again."},
};

// The class is an attribute like the service, and not the name of the schema: a locked keyring is
// searched by the hashes of attributes, and forgets schemas that it does not know.
constexpr const char* ourClass = "PrompterCore.GenericPassword";
const SecretSchema schema = {
    ourClass,
    SECRET_SCHEMA_DONT_MATCH_NAME,
    {{"class", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"service", SECRET_SCHEMA_ATTRIBUTE_STRING}, {}},
    0,
    0,
    0,
    0,
    0,
    0,
    0,
    0};

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
    void operator()(SecretValue* value) const { secret_value_unref(value); }
    void operator()(GError* error) const { g_error_free(error); }
};

template <class T>
using Owned = std::unique_ptr<T, Unref>;

std::int32_t statusOf(const GError& error) {
    const auto is = [&error](GQuark domain, int code) {
        return g_error_matches(&error, domain, code) != FALSE;
    };
    if (is(SECRET_ERROR, SECRET_ERROR_IS_LOCKED)) return locked;
    if (is(SECRET_ERROR, SECRET_ERROR_NO_SUCH_OBJECT)) return itemNotFound;
    if (is(SECRET_ERROR, SECRET_ERROR_ALREADY_EXISTS)) return duplicateItem;
    for (const int code : {G_DBUS_ERROR_ACCESS_DENIED, G_DBUS_ERROR_AUTH_FAILED}) {
        if (is(G_DBUS_ERROR, code)) return denied;
    }
    for (const int code : {G_DBUS_ERROR_FAILED, G_DBUS_ERROR_NO_MEMORY, G_DBUS_ERROR_IO_ERROR}) {
        if (is(G_DBUS_ERROR, code)) return ioError;
    }
    return is(SECRET_ERROR, SECRET_ERROR_PROTOCOL) ? ioError : notAvailable;
}

// One operation's talk with the secret service. Its steps are asked and waited for in a context of
// their own, so that nothing of the host's runs meanwhile. Once a step has failed, `status` says
// why and the steps after it do nothing.
class Conversation {
public:
    explicit Conversation(std::string_view service) : service_(service) {
        g_main_context_push_thread_default(context_.get());
        g_source_set_callback(timer_.get(), &Conversation::timeIsUp, cancel_.get(), nullptr);
        g_source_attach(timer_.get(), context_.get());
        if (service_.find('\0') != std::string::npos) status_ = wrongParameter;
        connect();
    }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation() {
        secrets_.reset();
        bus_.reset();
        while (g_main_context_iteration(context_.get(), FALSE)) {
        }
        g_main_context_pop_thread_default(context_.get());
    }

    std::int32_t status() const { return status_; }
    std::int32_t fail(std::int32_t status) { return status_ = status; }

    // All items of the service, locked ones too; with SECRET_SEARCH_LOAD_SECRETS, the secrets of
    // those that are not.
    std::vector<Owned<SecretItem>> items(SecretSearchFlags secrets) {
        std::vector<Owned<SecretItem>> result;
        const auto attributes = this->attributes();
        const auto flags = static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | secrets);
        GList* const found = ask<GList*>(
            [&](auto... reply) {
                secret_service_search(secrets_.get(), &schema, attributes.get(), flags, reply...);
            },
            [&](GAsyncResult* answer, GError** error) {
                return secret_service_search_finish(secrets_.get(), answer, error);
            });
        for (const GList* entry = found; entry != nullptr; entry = entry->next) {
            result.emplace_back(static_cast<SecretItem*>(entry->data));
        }
        g_list_free(found);
        return result;
    }

    // Where new items belong.
    Owned<SecretCollection> defaultCollection() {
        Owned<SecretCollection> collection(ask<SecretCollection*>(
            [&](auto... reply) {
                secret_collection_for_alias(secrets_.get(), SECRET_COLLECTION_DEFAULT,
                                            SECRET_COLLECTION_NONE, reply...);
            },
            secret_collection_for_alias_finish));
        if (!collection && (status_ == success || status_ == itemNotFound)) fail(noDefaultKeychain);
        return collection;
    }

    void setSecret(SecretItem* item, SecretValue* value) {
        ask<gboolean>([&](auto... reply) { secret_item_set_secret(item, value, reply...); },
                      [&](GAsyncResult* answer, GError** error) {
                          return secret_item_set_secret_finish(item, answer, error);
                      });
    }

    // Two that create the same item at once make one: the later one's secret replaces the other's.
    void create(SecretCollection* collection, SecretValue* value) {
        const auto attributes = this->attributes();
        const Owned<SecretItem> made(ask<SecretItem*>(
            [&](auto... reply) {
                secret_item_create(collection, &schema, attributes.get(), service_.c_str(), value,
                                   SECRET_ITEM_CREATE_REPLACE, reply...);
            },
            secret_item_create_finish));
        if (!made && status_ == success) fail(userCancelled);
    }

    void remove(SecretItem* item) {
        const gboolean removed =
            ask<gboolean>([&](auto... reply) { secret_item_delete(item, reply...); },
                          [&](GAsyncResult* answer, GError** error) {
                              return secret_item_delete_finish(item, answer, error);
                          });
        if (removed == FALSE && status_ == success) fail(userCancelled);
    }

private:
    void connect() {
        bus_.reset(ask<GDBusConnection*>(
            [](auto... reply) { g_bus_get(G_BUS_TYPE_SESSION, reply...); }, g_bus_get_finish));
        // A session's end is noticed by the call that fails; by default it would end the program.
        if (bus_) g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
        secrets_.reset(ask<SecretService*>(
            [](auto... reply) {
                secret_service_open(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION,
                                    reply...);
            },
            secret_service_open_finish));
    }

    Owned<GHashTable> attributes() const {
        return Owned<GHashTable>(secret_attributes_build(&schema, "class", ourClass, "service",
                                                         service_.c_str(), nullptr));
    }

    // What the service answers to `start`; null or false when it fails, or something has before.
    template <class Answer, class Start, class Finish>
    Answer ask(Start start, Finish finish) {
        if (status_ != success) return {};
        GAsyncResult* answered = nullptr;
        start(cancel_.get(), &Conversation::keepAnswer, &answered);
        while (answered == nullptr) {
            g_main_context_iteration(context_.get(), TRUE);
        }
        const Owned<GAsyncResult> answer(answered);
        GError* error = nullptr;
        const Answer result = finish(answer.get(), &error);
        if (error != nullptr) fail(statusOf(*Owned<GError>(error)));
        return result;
    }

    static void keepAnswer(GObject*, GAsyncResult* answer, gpointer place) {
        *static_cast<GAsyncResult**>(place) = G_ASYNC_RESULT(g_object_ref(answer));
    }
    static gboolean timeIsUp(gpointer cancel) {
        g_cancellable_cancel(G_CANCELLABLE(cancel));
        return G_SOURCE_REMOVE;
    }

    std::string service_;
    std::int32_t status_ = success;
    Owned<GMainContext> context_{g_main_context_new()};
    Owned<GCancellable> cancel_{g_cancellable_new()};
    Owned<GSource> timer_{g_timeout_source_new(timeLimit)};
    Owned<GDBusConnection> bus_;
    Owned<SecretService> secrets_;
};

bool isLocked(const Owned<SecretItem>& item) { return secret_item_get_locked(item.get()) != FALSE; }

// The items of the service, when there are some and each can be changed.
std::vector<Owned<SecretItem>> changeable(Conversation& talk) {
    std::vector<Owned<SecretItem>> items = talk.items(SECRET_SEARCH_NONE);
    if (talk.status() == success && items.empty()) talk.fail(itemNotFound);
    for (const auto& item : items) {
        if (isLocked(item)) talk.fail(locked);
    }
    return items;
}

Owned<SecretValue> secret(std::string_view bytes) {
    return Owned<SecretValue>(secret_value_new(bytes.data(), static_cast<gssize>(bytes.size()),
                                               "text/plain; charset=utf-8"));
}

}  // namespace

Found copyMatching(std::string_view service) {
    Conversation talk(service);
    const auto items = talk.items(SECRET_SEARCH_LOAD_SECRETS);
    for (const auto& item : items) {
        const Owned<SecretValue> value(secret_item_get_secret(item.get()));
        if (!value) continue;
        gsize size = 0;
        const char* const bytes = secret_value_get(value.get(), &size);
        return {.status = success, .bytes = std::string(bytes, size)};
    }
    if (talk.status() != success) return {.status = talk.status(), .bytes = {}};
    return {.status = items.empty() ? itemNotFound : locked, .bytes = {}};
}

std::int32_t update(std::string_view service, std::string_view bytes) {
    Conversation talk(service);
    const auto value = secret(bytes);
    for (const auto& item : changeable(talk)) {
        talk.setSecret(item.get(), value.get());
    }
    return talk.status();
}

std::int32_t add(std::string_view service, std::string_view bytes) {
    Conversation talk(service);
    const auto collection = talk.defaultCollection();
    if (!collection) return talk.status();
    if (secret_collection_get_locked(collection.get()) != FALSE) return locked;
    talk.create(collection.get(), secret(bytes).get());
    return talk.status();
}

std::int32_t remove(std::string_view service) {
    Conversation talk(service);
    for (const auto& item : changeable(talk)) {
        talk.remove(item.get());
    }
    return talk.status();
}

std::optional<std::string> messageOf(std::int32_t status) {
    for (const auto& message : messages) {
        if (message.status == status) return message.text;
    }
    return std::nullopt;
}

}  // namespace PrompterCore::KeychainItems
