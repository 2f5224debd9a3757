// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT

import { badRequest } from './errors.js';
import { isObject, parameter } from './exchange.js';
import { presented } from './documents.js';
import { withoutUndefined } from './range.js';

const PAGE_SIZE = 200;
const DEFAULT_PERIOD_MS = 60_000;
const FEEDS = ['normal', 'longpoll', 'continuous'];

export async function changes({ exchange, database, sequences }) {
  const options = await feedOptions(exchange, database, sequences);
  const feed = new Feed(exchange, database, sequences, options);
  await feed.run();
}

async function feedOptions(exchange, database, sequences) {
  const { query } = exchange;
  const body = exchange.method === 'POST' ? await exchange.readPostedJson() : {};
  const feed = query.get('feed') ?? 'normal';
  if (!FEEDS.includes(feed))
    throw badRequest(`Supported \`feed\` types: ${FEEDS.join(', ')}`);
  const since = query.get('since') ?? '0';
  return {
    feed: exchange.isHead ? 'normal' : feed,
    since: since === 'now' ? await database.updateSequence() : sequences.decode(since),
    // CouchDB reads 0 as 1.
    limit: Math.max(1, parameter.count(query, 'limit') ?? Infinity),
    timeout: Math.min(parameter.count(query, 'timeout') ?? DEFAULT_PERIOD_MS, DEFAULT_PERIOD_MS),
    heartbeat: heartbeatPeriod(query),
    descending: parameter.boolean(query, 'descending', false),
    reading: withoutUndefined({
      include_docs: parameter.boolean(query, 'include_docs', false),
      conflicts: parameter.boolean(query, 'conflicts', undefined),
      attachments: parameter.boolean(query, 'attachments', undefined),
      style: query.get('style') ?? undefined,
      doc_ids: wantedIds(query, body),
    }),
  };
}

function heartbeatPeriod(query) {
  const text = query.get('heartbeat');
  if (text === null || text === 'false')
    return 0;
  if (text === 'true')
    return DEFAULT_PERIOD_MS;
  if (!/^[1-9]\d*$/.test(text))
    throw badRequest('The heartbeat value should be a positive integer (in milliseconds).');
  return Number(text);
}

function wantedIds(query, body) {
  const filter = query.get('filter');
  if (filter === null)
    return undefined;
  if (filter !== '_doc_ids')
    throw badRequest(`Filter '${filter}' is not supported by this server`);
  const ids = (isObject(body) ? body.doc_ids : undefined) ?? parameter.json(query, 'doc_ids');
  if (!Array.isArray(ids))
    throw badRequest('`doc_ids` filter parameter is not a list.');
  return ids;
}

/** One answer to a request for changes, in any of the three forms. */
class Feed {
  constructor(exchange, database, sequences, options) {
    this.response = exchange.response;
    this.isHead = exchange.isHead;
    this.database = database;
    this.sequences = sequences;
    this.options = options;
    this.since = options.since;
    this.deadline = performance.now() + options.timeout;
    this.sent = 0;
    this.ended = false;
    this.isContinuous = options.feed === 'continuous';
    const end = () => this.end();
    this.response.once('close', end);
    database.once('gone', end);
    this.release = () => database.off('gone', end);
  }

  async run() {
    this.open();
    try {
      do {
        this.writesSeen = this.database.writes;
        await this.sendStored();
      } while (this.wantsMore() && await this.updated());
      await this.close();
    } finally {
      this.release();
      this.stopHeartbeat();
    }
  }

  open() {
    this.response.writeHead(200, {
      'Cache-Control': 'must-revalidate',
      'Content-Type': 'application/json',
    });
    this.response.write(this.isContinuous ? '\n' : '{"results":[\n');
    if (this.options.feed !== 'normal' && this.options.heartbeat) {
      this.heartbeat = setInterval(() => this.response.write('\n'), this.options.heartbeat);
    }
  }

  /** Sends what is stored behind the present sequence, page by page. */
  async sendStored() {
    const { limit, descending, reading } = this.options;
    const newest = await this.database.updateSequence();
    let page;
    do {
      const size = descending ? limit : Math.min(PAGE_SIZE, limit - this.sent);
      const found = await this.read({ ...reading, descending, ...limited(size) });
      for (const change of found.results)
        await this.sendRow(change);
      this.since = descending ? newest : Math.max(this.since, found.last_seq);
      page = { length: found.results.length, size };
    } while (page.length === page.size && this.sent < limit && !this.ended);
    if (this.sent < limit)
      this.since = Math.max(this.since, newest);
  }

  read(options) {
    return this.database.pouch.changes({ since: this.since, return_docs: true, ...options });
  }

  async sendRow({ seq, id, changes: revisions, deleted, doc }) {
    if (this.ended)
      return;
    const row = { seq: this.sequences.encode(seq), id, changes: revisions };
    if (deleted)
      row.deleted = true;
    if (this.options.reading.include_docs)
      row.doc = presented(doc);
    const text = JSON.stringify(row);
    const separator = this.sent > 0 && !this.isContinuous ? ',\n' : '';
    this.sent += 1;
    this.deadline = performance.now() + this.options.timeout;
    await this.send(separator + text + (this.isContinuous ? '\n' : ''));
  }

  async send(text) {
    if (!this.response.write(text) && !this.ended) {
      await new Promise((resolve) => {
        this.resume = resolve;
        this.response.once('drain', resolve);
      });
    }
  }

  wantsMore() {
    if (this.ended || this.sent >= this.options.limit)
      return false;
    return this.isContinuous || (this.options.feed === 'longpoll' && this.sent === 0);
  }

  /** Waits for a write. False when the time is over, the client gone or the database deleted. */
  async updated() {
    if (this.database.writes !== this.writesSeen)
      return true;
    return new Promise((resolve) => {
      const settle = (result) => {
        clearTimeout(timer);
        this.database.off('updated', onUpdate);
        this.wake = undefined;
        resolve(result);
      };
      const onUpdate = () => settle(true);
      const timer = this.options.heartbeat
        ? undefined
        : setTimeout(() => settle(false), this.deadline - performance.now());
      this.database.once('updated', onUpdate);
      this.wake = () => settle(false);
      if (this.ended)
        this.wake();
    });
  }

  end() {
    this.ended = true;
    this.stopHeartbeat();
    this.resume?.();
    this.wake?.();
  }

  stopHeartbeat() {
    clearInterval(this.heartbeat);
  }

  async close() {
    if (this.response.destroyed)
      return;
    const last_seq = this.sequences.encode(this.since);
    const pending = await this.pending();
    this.response.end(this.isContinuous
      ? JSON.stringify({ last_seq, pending }) + '\n'
      : `\n],\n"last_seq":${JSON.stringify(last_seq)},"pending":${pending}}\n`);
  }

  /** How many changes the limit has kept back. */
  async pending() {
    if (this.ended || this.options.descending || this.sent < this.options.limit)
      return 0;
    const { doc_ids } = this.options.reading;
    return (await this.read(withoutUndefined({ doc_ids }))).results.length;
  }
}

function limited(size) {
  return Number.isFinite(size) ? { limit: size } : {};
}
