// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <memory>

struct evp_pkey_st; // A name of OpenSSL.

/// The public key of a package's maker. Copies share their data.
class PublicKey
{
public:
    enum class Type { None, EcdsaP256, Ed25519 };

    /// A null key, which verifies nothing.
    PublicKey() = default;

    /// Reads a key in PEM format. The result is null if \a pem contains no key of a known type.
    static PublicKey fromPem(const QByteArray &pem);

    bool isNull() const { return !m_key; }
    Type type() const { return m_type; }

    /// Whether \a signature was made for \a message with the private key.
    ///
    /// A signature has 64 bytes. ECDSA signatures consist of two numbers, each with its least
    /// significant byte first, as in init packets.
    bool verifies(const QByteArray &message, const QByteArray &signature) const;

private:
    Type m_type = Type::None;
    std::shared_ptr<evp_pkey_st> m_key;
};
