// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { Buffer } from 'node:buffer';

import { badRequest } from './errors.js';

/**
 * Update sequences as clients see them: opaque texts such as "30-g1AAAA...", of which only the
 * server knows that the number in front counts, or plain numbers as old servers sent them.
 */
export class SequenceFormat {
  constructor(numeric) {
    this.numeric = numeric;
  }

  encode(sequence) {
    if (this.numeric)
      return sequence;
    const opaque = Buffer.from(`sequence ${sequence} of one shard`).toString('base64url');
    return `${sequence}-g1AAAA${opaque}`;
  }

  /** Takes both forms back, whatever form is sent. */
  decode(text) {
    const match = /^"?(\d+)(?:-[\w-]+)?"?$/.exec(text);
    if (!match)
      throw badRequest("Malformed sequence supplied in 'since' parameter.");
    return Number(match[1]);
  }
}
