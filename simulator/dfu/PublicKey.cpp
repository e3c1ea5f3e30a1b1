// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/dfu/PublicKey.h"

#include <openssl/ec.h>
#include <openssl/ecdsa.h>
#include <openssl/evp.h>
#include <openssl/pem.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr int kHalf = 32;

PublicKey::Type typeOf(const EVP_PKEY *key)
{
    if (EVP_PKEY_is_a(key, "ED25519") == 1) {
        return PublicKey::Type::Ed25519;
    }
    std::array<char, 64> group = {};
    const bool isP256 = EVP_PKEY_is_a(key, "EC") == 1
        && EVP_PKEY_get_group_name(key, group.data(), group.size(), nullptr) == 1
        && std::string_view(group.data()) == "prime256v1";
    return isP256 ? PublicKey::Type::EcdsaP256 : PublicKey::Type::None;
}

BIGNUM *number(QByteArray bytes)
{
    std::reverse(bytes.begin(), bytes.end());
    return BN_bin2bn(reinterpret_cast<const uchar *>(bytes.constData()),
                     static_cast<int>(bytes.size()), nullptr);
}

/// The signature in the encoding that OpenSSL reads.
QByteArray toDer(const QByteArray &signature)
{
    const std::unique_ptr<ECDSA_SIG, decltype(&ECDSA_SIG_free)> numbers(ECDSA_SIG_new(),
                                                                        &ECDSA_SIG_free);
    ECDSA_SIG_set0(numbers.get(), number(signature.left(kHalf)), number(signature.mid(kHalf)));
    uchar *encoded = nullptr;
    const int size = i2d_ECDSA_SIG(numbers.get(), &encoded);
    QByteArray result(reinterpret_cast<const char *>(encoded), qMax(size, 0));
    OPENSSL_free(encoded);
    return result;
}

} // namespace

PublicKey PublicKey::fromPem(const QByteArray &pem)
{
    const std::unique_ptr<BIO, decltype(&BIO_free)> input(
        BIO_new_mem_buf(pem.constData(), static_cast<int>(pem.size())), &BIO_free);
    PublicKey result;
    result.m_key.reset(PEM_read_bio_PUBKEY(input.get(), nullptr, nullptr, nullptr), &EVP_PKEY_free);
    result.m_type = result.m_key ? typeOf(result.m_key.get()) : Type::None;
    return result.m_type == Type::None ? PublicKey() : result;
}

bool PublicKey::verifies(const QByteArray &message, const QByteArray &signature) const
{
    if (isNull() || signature.size() != 2 * kHalf) {
        return false;
    }
    const bool isEcdsa = m_type == Type::EcdsaP256;
    const QByteArray encoded = isEcdsa ? toDer(signature) : signature;
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    const EVP_MD *const hash = isEcdsa ? EVP_sha256() : nullptr;
    return EVP_DigestVerifyInit(context.get(), nullptr, hash, nullptr, m_key.get()) == 1
        && EVP_DigestVerify(context.get(), reinterpret_cast<const uchar *>(encoded.constData()),
                            static_cast<std::size_t>(encoded.size()),
                            reinterpret_cast<const uchar *>(message.constData()),
                            static_cast<std::size_t>(message.size()))
        == 1;
}
